#include "stage/Advice.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "core/host/Holder.h"
#include "core/host/PathText.h"
#include "core/text/Text.h"

namespace quillon {
namespace {

/// One cause of errors. What is empty, or 0, fits all; the path is compared without regard to case.
struct Cause {
  int number;
  std::string_view reason, path, step;  // parts of them
  std::string_view advice;
  Remedy remedy = Remedy::None;
};

template <typename Number>
constexpr int N(Number number) {
  return static_cast<int>(number);
}

constexpr std::string_view
    kZipIsFaulty =
        "Nothing was changed. The route's zip is faulty: unpack it, mend what is said above, zip it again "
        "and "
        "add it. Or load another route.",
    kTakeOut =
        "Take that zip out of downloaded_routes and add the others; its original may be mended or downloaded "
        "again.",
    kAddAgain =
        "Nothing of yours is lost. Copy the route's zip from original_zips\\Installed to downloaded_routes "
        "and "
        "add it again; meanwhile load another route.",
    kClean =
        "Nothing of yours is lost. Close Train Simulator and load again; Clean in the route manager "
        "('quillon "
        "clean') rebuilds the working route.",
    kCleanFirst = "Nothing was changed. Clean in the route manager ('quillon clean'), then load again.",
    kMoveAway = "Move what stands there elsewhere and try again.",
    kRename = "Rename one of them in downloaded_routes and add again. Nothing of yours is lost.",
    kPackAgain = "Nothing was changed. Rename it and pack again.",
    kCloseIt =
        "Another program has it open: Train Simulator, its editor, a viewer or a virus scanner. Close it and "
        "try again.",
    kCloseNamed = "Close %, or wait until it is done with the file, and try again.",
    kLayAgain =
        "A delivered file is missing: run 'quillon setup' to lay it again, or install Quillon again. What is "
        "yours stays.",
    kScript =
        "The route's custom script is to blame. Clean in the route manager and load again; if it comes "
        "again, "
        "mend the script.",
    kCheckDisk =
        "The disk, or the way to it, is to blame. Check it, and copy what is dear to you elsewhere first.";

// The first that fits counts; the last fits all.
using enum ErrorNumber;
constexpr std::array kCauses = {
    Cause{N(DiskFull), "", "", "", "Make room on the disk that holds it and try again."},
    Cause{N(OutOfMemory), "", "", "", "Close other programs and try again."},
    Cause{N(InternalError), "", "", "",
          "A fault of Quillon itself. Write to its makers, with this text and what you did."},
    Cause{0, kNoPermission, "", "",
          "Take the read-only mark off it, or get the right to change it and its folder, and try again."},
    Cause{0, kOpenIn, "", "", kCloseNamed},
    Cause{0, kNoPermissionToRead, "", "",
          "Take the read-only mark off it, or get the right to read it and its folder, and try again."},
    Cause{0, "the files that Quillon brings along", "", "",
          "Nothing was written. If you have started it inside a zip, unpack the whole zip first and start it "
          "there; "
          "else install Quillon again."},
    Cause{0, "there is no such folder", "", "Looking at the application folder",
          "Nothing was written. Correct the name, or make a new application folder there: run 'quillon "
          "setup'."},
    Cause{0, "nothing is laid out in that folder yet", "", "",
          "Nothing was written. Correct the name, or lay the application folder out there: run 'quillon "
          "setup'."},
    Cause{0, "it is no folder", "", "", "Nothing was written. Name a folder by --app."},
    Cause{0, "an application folder is laid out with", "", "",
          "Nothing was written. Name another folder by --app, of your own."},
    Cause{0, "it is a folder", "", "", "Name a file."},
    Cause{0, "it exists and is not empty", "", "", "Name a folder that is empty or not there yet."},
    Cause{0, "stands where a", "", "", kMoveAway},
    Cause{0, "want the same name", "QUILLON-ROUTE\\", "", kCleanFirst},
    Cause{0, "want the same name", "", "", kZipIsFaulty},
    Cause{0, "Clean puts the working route in order", "", "", kCleanFirst},
    Cause{0, "the route file holds", "", "", kZipIsFaulty},
    Cause{0, "it holds no usable name", "", "", kZipIsFaulty},
    Cause{0, "; mend or remove this file", "", "",
          "Mend that file in the game's editor, or move it away, and run the Checkup again."},
    Cause{0, "to pack the route", "", "", kPackAgain},
    Cause{0, "while it is packed", "", "",
          "Close Train Simulator, its editor and whatever else uses the route, and pack again."},
    Cause{0, "a program and a zip that are both called", "", "",
          "Take this zip out of downloaded_routes, unpack it, and put the zip inside it there instead."},
    Cause{0, "names that differ in case only", "", "", kRename},
    Cause{0, "another download has the name", "", "", kRename},
    Cause{0, "not all of it could be deleted", "", "",
          "Close the program that uses its files, and delete it again."},
    Cause{0, "the copy is not what", "", "",
          "Nothing was deleted: the file in the game is whole. Close other programs, check the disk, and try "
          "again."},
    Cause{0, "rescued", "", "",
          "Nothing was put back. Move what stands in the way elsewhere, or copy the rescued files by hand."},
    Cause{0, "", "\\RESCUED\\", "Putting the rescued",
          "Nothing was put back. Move what stands in the way elsewhere, or copy the rescued files by hand."},
    Cause{N(InvalidProcedureCall), "", "CUSTOM.CST", "",
          "Mend that line of the route's script, and load again."},
    Cause{N(FileAlreadyExists), "", "", "Running the route's custom script", kScript},
    Cause{N(PathNotFound), "", "", "Running the route's custom script", kScript},
    Cause{N(FileAlreadyExists), "", "", "permanently",
          "Nothing was changed. Try again: another number is put behind the name. Or rename that folder."},
    Cause{0, "", "\\HELP.HLP", "", kLayAgain},
    Cause{N(FileNotFound), "", "MISC_INFO", "", kLayAgain, Remedy::LayDeliveredFiles},
    Cause{N(PathNotFound), "", "MISC_INFO", "", kLayAgain, Remedy::LayDeliveredFiles},
    Cause{N(FileNotFound), "", "QNNOIMAGE", "", kLayAgain, Remedy::LayDeliveredFiles},
    Cause{N(FileNotFound), "", ".QNZ", "", kAddAgain},
    Cause{N(PathNotFound), "", ".QNZ", "", kAddAgain},
    Cause{N(InvalidFileFormat), "", ".QNZ", "", kAddAgain},
    Cause{
        N(FileAlreadyExists), "", "\\DOWNLOADED_ROUTES\\QUILLON-", "",
        "An earlier attempt has left it. Move it, or the zip without \"Quillon-\" in its name, elsewhere and "
        "add again."},
    Cause{N(PermissionDenied), "", "", "", kCloseIt},
    Cause{0, "it can't be opened", "", "", kCloseIt},
    Cause{N(DeviceIoError), "", "", "", kCheckDisk},
    Cause{0, "", "\\DOWNLOADED_ROUTES\\", "", kTakeOut},
    Cause{0, "", "\\ROUTE_PICS\\", "", kTakeOut},
    Cause{0, "", "\\ROUTE_INFO\\", "", kTakeOut},
    Cause{0, "", "\\RESOURCES\\TEMP\\", "", kTakeOut},
    Cause{0, "", "\\RESOURCES\\ZIPTEMP", "", kTakeOut},
    Cause{0, "", "QUILLON-ROUTE", "", kClean},
    Cause{N(PathNotFound), "", "\\TRAINS\\CONSISTS", "",
          "The route brings consists. Make that folder in the game, or mend the game, and load again."},
    Cause{N(BadFileName), "", "", "",
          "The disk takes no such name. Rename it, or the folder that it lies in."},
    Cause{0, "", "", "", "Mend what is said above and try again."},
};

constexpr Cause kMissingPreview{N(FileNotFound),
                                "",
                                "",
                                "",
                                "The preview of a route is missing: 'quillon verify --repair' makes it anew.",
                                Remedy::RepairCatalogue};

const Cause& CauseOf(const RunTimeError& error, std::string_view step) {
  const std::string path = UpperCase(error.path());
  if (error.number() == kMissingPreview.number && Contains(path, "\\ROUTES\\TS") && path.ends_with(".JPG"))
    return kMissingPreview;
  return *std::find_if(kCauses.begin(), kCauses.end(), [&](const Cause& cause) {
    return (cause.number == 0 || cause.number == error.number()) && Contains(error.reason(), cause.reason) &&
           Contains(path, cause.path) && Contains(step, cause.step);
  });
}

}  // namespace

std::string HostPathOf(const Program& program, const RunTimeError& error) {
  const std::string& path = error.path();
  return Contains(path, "\\") ? program.files.Host().HostPath(path) : path;
}

std::string ErrorLine(const Program& program, const RunTimeError& error) {
  std::string line = program.step + ": " + error.text();
  if (!error.path().empty()) line += ": " + HostPathOf(program, error);
  if (!error.reason().empty()) line += " (" + error.reason() + ")";
  return WithoutStandIns(line);
}

std::string Advice(const RunTimeError& error, std::string_view step) {
  const std::string_view advice = CauseOf(error, step).advice;
  if (advice != kCloseNamed) return std::string(advice);
  return ReplaceAll(advice, "%", error.reason().substr(error.reason().find(kOpenIn) + std::strlen(kOpenIn)));
}

Remedy RemedyOf(const RunTimeError& error) { return CauseOf(error, {}).remedy; }

std::string ErrorReport(const Program& program, const RunTimeError& error) {
  std::string report = program.step + ":\n" + error.text();
  if (!error.reason().empty()) report += " (" + error.reason() + ")";
  if (!error.path().empty()) report += "\n\n" + HostPathOf(program, error);
  return report + "\n\n" + Advice(error, program.step);
}

}  // namespace quillon
