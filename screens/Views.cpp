#include "screens/Views.h"

#include <stdexcept>

#include "screens/NoticeViews.h"
#include "screens/WorkViews.h"
#include "screens/frmMain.h"
#include "screens/frmOptions.h"
#include "screens/frmReportOptions.h"
#include "screens/frmRoutes.h"
#include "screens/frmShelf.h"
#include "screens/frmTimetable.h"
#include "screens/frmWhy.h"

namespace quillon {
namespace {

template <typename View, typename Model>
bool Make(Screen& screen, Desk& desk, std::unique_ptr<ScreenView>& view) {
  if (auto* model = dynamic_cast<Model*>(&screen)) view = std::make_unique<View>(*model, desk);
  return view != nullptr;
}

}  // namespace

std::unique_ptr<ScreenView> MakeView(Screen& model, Desk& desk) {
  std::unique_ptr<ScreenView> view;
  const bool made =
      Make<frmMain, MainScreen>(model, desk, view) || Make<frmRoutes, RoutesScreen>(model, desk, view) ||
      Make<frmOptions, OptionsScreen>(model, desk, view) || Make<frmLoad, LoadScreen>(model, desk, view) ||
      Make<frmZipCheck, ZipCheckScreen>(model, desk, view) ||
      Make<frmInitProg, InitProgScreen>(model, desk, view) ||
      Make<frmTimetable, TimetableScreen>(model, desk, view) ||
      Make<frmShelf, ShelfScreen>(model, desk, view) || Make<frmWhy, WhyScreen>(model, desk, view) ||
      Make<frmCleanUp, CleanUpScreen>(model, desk, view) ||
      Make<frmWelcome, WelcomeScreen>(model, desk, view) || Make<frmNoAct, NoActScreen>(model, desk, view) ||
      Make<frmCleanUpNotice, CleanUpNoticeScreen>(model, desk, view) ||
      Make<frmPack, PackScreen>(model, desk, view) ||
      Make<frmPackConfirm, PackConfirmScreen>(model, desk, view) ||
      Make<frmReportOptions, ReportOptionsScreen>(model, desk, view) ||
      Make<frmActivityCheck, ActivityCheckScreen>(model, desk, view) ||
      Make<frmCustomConsist, CustomConsistScreen>(model, desk, view) ||
      Make<frmCustomMessage, CustomMessageScreen>(model, desk, view);
  if (!made) throw std::logic_error("no view shows " + model.Name());
  return view;
}

}  // namespace quillon
