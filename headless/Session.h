// One process of the program without a screen: runs commands as a user's clicks would.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "headless/CommandLine.h"
#include "headless/HeadlessFrontEnd.h"
#include "headless/Hints.h"
#include "headless/Output.h"

namespace quillon {

class MainScreen;
class ReportOptionsScreen;
class RoutesScreen;

/// The exit statuses.
inline constexpr int kDone = 0, kFailed = 1, kWrongCommandLine = 2, kRefused = 3;

class Session {
 public:
  /// `output` outlives the session. `files` stands in for the host's file system when it is given.
  Session(const Options& options, Output& output, std::unique_ptr<FileSystem> files = {});

  /// Runs a command to its end and returns the exit status; a run-time error is reported and ends the
  /// session.
  int Run(const Command& command);

 private:
  using Action = void (Session::*)(const Command&);
  static const std::map<std::string, Action, std::less<>>& Actions();

  int Execute(const Command& command);
  int RunScript(const Command& command);
  bool StartUp();
  bool StartUpToVerify();
  bool AtMain();
  RoutesScreen* AtRoutes();
  ReportOptionsScreen* AtReportOptions();
  MainScreen& Main();
  int Status();
  void PutRow(const std::string& text, const char* list = "causes");
  void PutCounts(const std::string& causesFile);
  void Report(const class RunTimeError& error);
  void RefuseRow(std::string_view name, const char* list);
  bool HoverRow(const std::string& name);
  bool PickRow(const std::string& name);
  void ActOnRow(const std::string& name, bool permanent);

  void Setup(const Command& command);
  void Sample(const Command& command);
  void SampleInstalled(const Command& command);
  void Start(const Command& command);
  void Routes(const Command& command);
  void ListDetails();
  void Pick(const Command& command);
  void Info(const Command& command);
  void Load(const Command& command);
  void Add(const Command& command);
  void Clean(const Command& command);
  void Pack(const Command& command);
  void Remove(const Command& command);
  void Permanent(const Command& command);
  void Checkup(const Command& command);
  void CheckRoutes(const Command& command);
  void Report(const Command& command);
  void Causes(const Command& command);
  void ChangeOptions(const Command& command);
  void MakeList(const Command& command);
  void Help(const Command& command);
  void Verify(const Command& command);
  void Shelf(const Command& command);

  const Options options_;
  Output& output_;
  HeadlessFrontEnd frontEnd_;
  RunningProgram program_;
  OpenScreens& screens_;
  const Hints hints_;
  bool started_ = false;
  bool cutStart_ = false;  // by a missing preview, for `verify`
};

}  // namespace quillon
