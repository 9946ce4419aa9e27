// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "fakes/fake_event_loop.h"
#include "fakes/journal.h"
#include "platform/clipboard.h"
#include "platform/default_application.h"
#include "platform/file_calls.h"
#include "platform/instance_calls.h"
#include "platform/internet_session.h"
#include "platform/message_box.h"
#include "platform/page_fetch.h"
#include "platform/shell_calls.h"
#include "platform/sound.h"
#include "platform/system_info.h"

namespace kivandra::fakes {

/// A box that no test announced fails the test, as does one whose text, style or title differs.
class FakeMessageBoxes : public MessageBoxes {
 public:
  explicit FakeMessageBoxes(Journal& journal);
  ~FakeMessageBoxes() override;

  void Expect(std::string text, int style = kMsgOkOnly, std::string title = {},
              MsgBoxResult answer = MsgBoxResult::Ok, std::function<void()> meanwhile = {});
  MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override;

 private:
  struct Box {
    std::string text;
    int style;
    std::string title;
    MsgBoxResult answer;
    std::function<void()> meanwhile;
  };
  Journal& journal_;
  std::deque<Box> expected_;
};

/// Pages come when the test says so (`Answer`), or by themselves after `delay` if the address is in `pages`.
class FakePageFetch : public PageFetch {
 public:
  FakePageFetch(Journal& journal, FakeEventLoop& loop);
  ~FakePageFetch() override;

  [[nodiscard]] std::unique_ptr<FetchTicket> FetchPage(const std::string& url, Done done) override;
  /// Delivers the oldest fetch of `url` that still waits; false if nobody waits for it.
  bool Answer(const std::string& url, const std::string& text);
  [[nodiscard]] bool Waits(const std::string& url) const;

  std::map<std::string, std::string> pages;
  long delay = 10;

 private:
  struct Order {
    std::string url;
    Done done;
  };
  struct Ticket : FetchTicket {
    explicit Ticket(std::shared_ptr<Order> kept);
    std::shared_ptr<Order> order;
  };
  static void Deliver(Order& order, const std::string& text);

  Journal& journal_;
  FakeEventLoop& loop_;
  std::vector<std::weak_ptr<Order>> orders_;
};

class FakeSound : public Sound {
 public:
  explicit FakeSound(Journal& journal);
  [[nodiscard]] unsigned waveOutGetNumDevs() override;
  void sndPlaySoundA(const std::string& path, unsigned flags) override;
  void Beep() override;
  unsigned devices = 1;

 private:
  Journal& journal_;
};

class FakeInstanceCalls : public InstanceCalls {
 public:
  explicit FakeInstanceCalls(Journal& journal);
  ~FakeInstanceCalls() override;
  Handle CreateMutexA(const std::string& name, bool initialOwner) override;
  [[nodiscard]] unsigned long GetLastError() const override;
  void CloseHandle(Handle handle) override;
  [[nodiscard]] bool PrevInstance() override;
  void EnumWindows(const std::function<bool(Handle)>& each) override;
  [[nodiscard]] Handle GetPropA(Handle window, const std::string& name) override;
  [[nodiscard]] bool IsWindowVisible(Handle) override;
  [[nodiscard]] bool IsIconic(Handle) override;
  void SendMessageA(Handle window, unsigned message, unsigned wParam, long lParam) override;
  void SendMessageTimeoutA(Handle window, unsigned message, unsigned wParam, const CopyData& data,
                           unsigned flags, unsigned timeout) override;
  void SetForegroundWindow(Handle window) override;

  bool taken = false;
  bool previous = false;
  bool windowVisible = true;
  bool windowIconic = false;
  std::map<Handle, Handle> marks;
  CopyData sent;

 private:
  Journal& journal_;
};

class FakeSystemInfo : public SystemInfo {
 public:
  FakeSystemInfo();
  ~FakeSystemInfo() override;
  [[nodiscard]] std::string ProgramDirectory() const override;
  [[nodiscard]] std::string ProgramFileName() const override;
  [[nodiscard]] std::string CommandLine() const override;
  [[nodiscard]] std::string GetWindowsDirectoryA() const override;
  [[nodiscard]] std::string GetSystemDirectoryA() const override;
  [[nodiscard]] std::string SHGetSpecialFolderPathA(int folder) const override;
  [[nodiscard]] DllVersionInfo DllGetVersion() const override;
  [[nodiscard]] std::string FormatToday(const std::string& pattern) const override;
  std::string commandLine;
  std::string today = "16/11/2026";
  std::string favorites = "/data/Favorites";
  DllVersionInfo engine{6, 0};
};

/// Files and folders in memory. Files may stand where no folder is; a listing needs one.
class FakeFileCalls : public FileCalls {
 public:
  explicit FakeFileCalls(Journal& journal);
  ~FakeFileCalls() override;
  void Kill(const std::string& path) override;
  [[nodiscard]] std::string Dir(const std::string& path) const override;
  void Name(const std::string& path, const std::string& newPath) override;
  [[nodiscard]] std::string ReadFile(const std::string& path) const override;
  void WriteFile(const std::string& path, const std::string& bytes) override;
  [[nodiscard]] FolderListing ListFolder(const std::string& path) const override;
  void MakeFolder(const std::string& path) override;
  void DeleteFolder(const std::string& path) override;

  std::map<std::string, std::string> files;
  std::map<std::string, bool> folders;  // true: a link to a folder

 private:
  static std::string Parent(const std::string& path);
  template <typename Entries>
  static void MoveIn(Entries& entries, const std::string& path, const std::string& newPath) {
    Entries moved;
    for (const auto& [name, value] : entries) {
      const bool inside = name == path || name.starts_with(path + "/");
      moved.emplace(inside ? newPath + name.substr(path.size()) : name, value);
    }
    entries = moved;
  }
  void MoveFolder(const std::string& path, const std::string& newPath);

  Journal& journal_;
};

class FakeShellCalls : public ShellCalls {
 public:
  explicit FakeShellCalls(Journal& journal);
  void Shell(const std::string& commandLine, int windowStyle) override;
  void SendKeys(const std::string& keys) override;

 private:
  Journal& journal_;
};

class FakeDefaultApplication : public DefaultApplication {
 public:
  explicit FakeDefaultApplication(Journal& journal);
  void Register() override;

 private:
  Journal& journal_;
};

class FakeClipboard : public Clipboard {
 public:
  explicit FakeClipboard(Journal& journal);
  ~FakeClipboard() override;
  void Clear() override;
  [[nodiscard]] std::string GetText() override;
  std::string text;

 private:
  Journal& journal_;
};

class FakeInternetSession : public InternetSession {
 public:
  explicit FakeInternetSession(Journal& journal);
  void InternetSetOptionA(int option) override;

 private:
  Journal& journal_;
};

}  // namespace kivandra::fakes
