// Which view shows which screen.
#pragma once

#include <memory>

#include "screens/ScreenView.h"

namespace quillon {

/// The view of a model; both arguments outlive it.
std::unique_ptr<ScreenView> MakeView(Screen& model, Desk& desk);

}  // namespace quillon
