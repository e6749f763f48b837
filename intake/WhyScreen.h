// The model of frmWhy: what became of each download of the last intake.
#pragma once

#include <string>
#include <vector>

#include "core/Controls.h"
#include "core/Screen.h"
#include "intake/IntakeLog.h"

namespace quillon {

class WhyScreen : public Screen {
 public:
  explicit WhyScreen(Program& program) : Screen(program, "frmWhy") {}

  /// One row a download, the newest first: kind, zip and reason, with a tab between them.
  List ListWhy{.enabled = true, .visible = true};
  /// When that intake began, and the whole reason of the current row.
  Label lblWhen, lblReason;
  Button btnExplore, btnOK;

  void Activate() override;
  void ListWhyHover(int row);

  /// The folder where the current row's download lies now; without a row that of all originals.
  void btnExploreClick();
  void btnOKClick() { program_.stage.Unload(Name()); }

 private:
  std::string FolderOfCurrent() const;

  std::vector<IntakeLog::Line> lines_;
};

}  // namespace quillon
