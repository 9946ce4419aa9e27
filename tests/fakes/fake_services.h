// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
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
  explicit FakeMessageBoxes(Journal& journal) : journal_(journal) {}
  ~FakeMessageBoxes() override { EXPECT_TRUE(expected_.empty()) << "a box that was announced did not come"; }

  void Expect(std::string text, int style = kMsgOkOnly, std::string title = {},
              MsgBoxResult answer = MsgBoxResult::Ok, std::function<void()> meanwhile = {}) {
    expected_.push_back({std::move(text), style, std::move(title), answer, std::move(meanwhile)});
  }
  MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override {
    journal_.Call("MsgBox " + Quoted(text));
    if (expected_.empty()) {
      ADD_FAILURE() << "nobody announced the box " << Quoted(text);
      return MsgBoxResult::Cancel;
    }
    const Box box = std::move(expected_.front());
    expected_.pop_front();
    EXPECT_EQ(text, box.text);
    EXPECT_EQ(style, box.style);
    EXPECT_EQ(title, box.title);
    if (box.meanwhile) {
      box.meanwhile();
    }
    return box.answer;
  }

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
  FakePageFetch(Journal& journal, FakeEventLoop& loop) : journal_(journal), loop_(loop) {}

  [[nodiscard]] std::unique_ptr<FetchTicket> FetchPage(const std::string& url, Done done) override {
    journal_.Call("FetchPage " + Quoted(url));
    auto order = std::make_shared<Order>(Order{url, std::move(done)});
    orders_.push_back(order);
    if (const auto page = pages.find(url); page != pages.end()) {
      loop_.After(delay, [weak = std::weak_ptr<Order>(order), text = page->second] {
        if (const auto kept = weak.lock()) {
          Deliver(*kept, text);
        }
      });
    }
    return std::make_unique<Ticket>(order);
  }
  /// Delivers the oldest fetch of `url` that still waits; false if nobody waits for it.
  bool Answer(const std::string& url, const std::string& text) {
    for (const auto& weak : orders_) {
      const auto order = weak.lock();
      if (order && order->url == url && order->done) {
        Deliver(*order, text);
        return true;
      }
    }
    return false;
  }
  [[nodiscard]] bool Waits(const std::string& url) const {
    for (const auto& weak : orders_) {
      const auto order = weak.lock();
      if (order && order->url == url && order->done) {
        return true;
      }
    }
    return false;
  }

  std::map<std::string, std::string> pages;
  long delay = 10;

 private:
  struct Order {
    std::string url;
    Done done;
  };
  struct Ticket : FetchTicket {
    explicit Ticket(std::shared_ptr<Order> kept) : order(std::move(kept)) {}
    std::shared_ptr<Order> order;
  };
  static void Deliver(Order& order, const std::string& text) {
    if (auto done = std::exchange(order.done, nullptr)) {
      done(text);
    }
  }

  Journal& journal_;
  FakeEventLoop& loop_;
  std::vector<std::weak_ptr<Order>> orders_;
};

class FakeSound : public Sound {
 public:
  explicit FakeSound(Journal& journal) : journal_(journal) {}
  [[nodiscard]] unsigned waveOutGetNumDevs() override { return devices; }
  void sndPlaySoundA(const std::string& path, unsigned flags) override {
    journal_.Call("sndPlaySoundA " + Quoted(path) + ", " + std::to_string(flags));
  }
  void Beep() override { journal_.Call("Beep"); }
  unsigned devices = 1;

 private:
  Journal& journal_;
};

class FakeInstanceCalls : public InstanceCalls {
 public:
  explicit FakeInstanceCalls(Journal& journal) : journal_(journal) {}
  Handle CreateMutexA(const std::string& name, bool initialOwner) override {
    journal_.Call("CreateMutexA " + Quoted(name) + (initialOwner ? ", owner" : ""));
    return 77;
  }
  [[nodiscard]] unsigned long GetLastError() const override { return taken ? ERROR_ALREADY_EXISTS : 0; }
  void CloseHandle(Handle handle) override { journal_.Call("CloseHandle " + std::to_string(handle)); }
  [[nodiscard]] bool PrevInstance() override { return previous; }
  void EnumWindows(const std::function<bool(Handle)>& each) override {
    journal_.Call("EnumWindows");
    for (const auto& [window, mark] : marks) {
      if (!each(window)) {
        return;
      }
    }
  }
  [[nodiscard]] Handle GetPropA(Handle window, const std::string& name) override {
    journal_.Call("GetPropA " + std::to_string(window) + ", " + Quoted(name));
    return marks[window];
  }
  [[nodiscard]] bool IsWindowVisible(Handle) override { return windowVisible; }
  [[nodiscard]] bool IsIconic(Handle) override { return windowIconic; }
  void SendMessageA(Handle window, unsigned message, unsigned wParam, long lParam) override {
    journal_.Call("SendMessageA " + std::to_string(window) + ", " + std::to_string(message) + ", " +
                  std::to_string(wParam) + ", " + std::to_string(lParam));
  }
  void SendMessageTimeoutA(Handle window, unsigned message, unsigned wParam, const CopyData& data,
                           unsigned flags, unsigned timeout) override {
    journal_.Call("SendMessageTimeoutA " + std::to_string(window) + ", " + std::to_string(message) + ", " +
                  std::to_string(wParam) + ", " + std::to_string(flags) + ", " + std::to_string(timeout));
    sent = data;
  }
  void SetForegroundWindow(Handle window) override {
    journal_.Call("SetForegroundWindow " + std::to_string(window));
  }

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
  [[nodiscard]] std::string ProgramDirectory() const override { return "/program"; }
  [[nodiscard]] std::string ProgramFileName() const override { return "kivandra"; }
  [[nodiscard]] std::string CommandLine() const override { return commandLine; }
  [[nodiscard]] std::string GetWindowsDirectoryA() const override { return "/data"; }
  [[nodiscard]] std::string GetSystemDirectoryA() const override { return "/data"; }
  [[nodiscard]] std::string SHGetSpecialFolderPathA(int folder) const override {
    EXPECT_EQ(folder, CSIDL_FAVORITES);
    if (favorites.empty()) {
      throw PlatformError(kInvalidCall, "no favourites folder");
    }
    return favorites;
  }
  [[nodiscard]] DllVersionInfo DllGetVersion() const override { return engine; }
  [[nodiscard]] std::string FormatToday(const std::string& pattern) const override {
    EXPECT_EQ(pattern, "d/m/yyyy");
    return today;
  }
  std::string commandLine;
  std::string today = "16/11/2026";
  std::string favorites = "/data/Favorites";
  DllVersionInfo engine{6, 0};
};

/// Files and folders in memory. Files may stand where no folder is; a listing needs one.
class FakeFileCalls : public FileCalls {
 public:
  explicit FakeFileCalls(Journal& journal) : journal_(journal) {}
  void Kill(const std::string& path) override {
    journal_.Call("Kill " + Quoted(path));
    if (files.erase(path) == 0) {
      throw PlatformError(53, "File not found");
    }
  }
  [[nodiscard]] std::string Dir(const std::string& path) const override {
    journal_.Call("Dir " + Quoted(path));
    return files.count(path) != 0 ? path.substr(path.rfind('/') + 1) : std::string();
  }
  void Name(const std::string& path, const std::string& newPath) override {
    journal_.Call("Name " + Quoted(path) + ", " + Quoted(newPath));
    if (files.count(newPath) != 0 || folders.count(newPath) != 0) {
      throw PlatformError(58, "File already exists");
    }
    if (folders.count(path) != 0) {
      MoveFolder(path, newPath);
      return;
    }
    if (files.count(path) == 0) {
      throw PlatformError(53, "File not found");
    }
    files[newPath] = files[path];
    files.erase(path);
  }
  [[nodiscard]] std::string ReadFile(const std::string& path) const override {
    journal_.Call("ReadFile " + Quoted(path));
    const auto found = files.find(path);
    if (found == files.end()) {
      throw PlatformError(53, "File not found");
    }
    return found->second;
  }
  void WriteFile(const std::string& path, const std::string& bytes) override {
    journal_.Call("WriteFile " + Quoted(path));
    if (folders.count(path) != 0) {
      throw PlatformError(75, "Path/File access error");
    }
    files[path] = bytes;
  }
  [[nodiscard]] FolderListing ListFolder(const std::string& path) const override {
    journal_.Call("ListFolder " + Quoted(path));
    if (folders.count(path) == 0) {
      throw PlatformError(76, "Path not found");
    }
    FolderListing listing;
    for (const auto& [folder, link] : folders) {
      if (Parent(folder) == path) {
        listing.folders.push_back({folder.substr(path.size() + 1), link});
      }
    }
    for (const auto& [file, bytes] : files) {
      if (Parent(file) == path) {
        listing.files.push_back(file.substr(path.size() + 1));
      }
    }
    return listing;
  }
  void MakeFolder(const std::string& path) override {
    journal_.Call("MakeFolder " + Quoted(path));
    if (files.count(path) != 0) {
      throw PlatformError(75, "Path/File access error");
    }
    for (std::string each = path; !each.empty(); each = Parent(each)) {
      folders.emplace(each, false);
    }
  }
  void DeleteFolder(const std::string& path) override {
    journal_.Call("DeleteFolder " + Quoted(path));
    if (folders.erase(path) == 0) {
      throw PlatformError(76, "Path not found");
    }
    std::erase_if(folders, [&](const auto& each) { return each.first.starts_with(path + "/"); });
    std::erase_if(files, [&](const auto& each) { return each.first.starts_with(path + "/"); });
  }

  std::map<std::string, std::string> files;
  std::map<std::string, bool> folders;  // true: a link to a folder

 private:
  static std::string Parent(const std::string& path) { return path.substr(0, path.rfind('/')); }
  template <typename Entries>
  static void MoveIn(Entries& entries, const std::string& path, const std::string& newPath) {
    Entries moved;
    for (const auto& [name, value] : entries) {
      const bool inside = name == path || name.starts_with(path + "/");
      moved.emplace(inside ? newPath + name.substr(path.size()) : name, value);
    }
    entries = moved;
  }
  void MoveFolder(const std::string& path, const std::string& newPath) {
    if (newPath.starts_with(path + "/") || folders.count(Parent(newPath)) == 0) {
      throw PlatformError(75, "Path/File access error");
    }
    MoveIn(folders, path, newPath);
    MoveIn(files, path, newPath);
  }

  Journal& journal_;
};

class FakeShellCalls : public ShellCalls {
 public:
  explicit FakeShellCalls(Journal& journal) : journal_(journal) {}
  void Shell(const std::string& commandLine, int windowStyle) override {
    journal_.Call("Shell " + Quoted(commandLine) + ", " + std::to_string(windowStyle));
  }
  void SendKeys(const std::string& keys) override { journal_.Call("SendKeys " + Quoted(keys)); }

 private:
  Journal& journal_;
};

class FakeDefaultApplication : public DefaultApplication {
 public:
  explicit FakeDefaultApplication(Journal& journal) : journal_(journal) {}
  void Register() override { journal_.Call("Register"); }

 private:
  Journal& journal_;
};

class FakeClipboard : public Clipboard {
 public:
  explicit FakeClipboard(Journal& journal) : journal_(journal) {}
  void Clear() override {
    journal_.Call("Clipboard.Clear");
    text.clear();
  }
  [[nodiscard]] std::string GetText() override {
    journal_.Call("Clipboard.GetText");
    return text;
  }
  std::string text;

 private:
  Journal& journal_;
};

class FakeInternetSession : public InternetSession {
 public:
  explicit FakeInternetSession(Journal& journal) : journal_(journal) {}
  void InternetSetOptionA(int option) override {
    journal_.Call("InternetSetOptionA " + std::to_string(option));
  }

 private:
  Journal& journal_;
};

}  // namespace kivandra::fakes
