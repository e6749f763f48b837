// The pass that lifts the small files out of each route: documents, activities, consists, pictures.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "intake/IntakeState.h"

namespace quillon {

class InformationExtraction {
 public:
  explicit InformationExtraction(IntakeState& state) : state_(state), unzip_(state.Reader()) {}

  /// Each route of ListofRouteZips ends in ListFinal.
  void Run();

 private:
  void ExtractRoute(const std::string& zip);
  void RescueOwnWork(const std::string& zip);
  void ExtractInto(const std::string& folder, std::initializer_list<std::string_view> filters,
                   const std::string& caption);
  void GivePagesTheirPictures(const std::string& zip);

  IntakeState& state_;
  ArchiveReader unzip_;
};

}  // namespace quillon
