// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_services.h"

#include <gtest/gtest.h>

#include <utility>

namespace kivandra::fakes {

FakeMessageBoxes::FakeMessageBoxes(Journal& journal) : journal_(journal) {}

FakeMessageBoxes::~FakeMessageBoxes() {
  EXPECT_TRUE(expected_.empty()) << "a box that was announced did not come";
}

void FakeMessageBoxes::Expect(std::string text, int style, std::string title, MsgBoxResult answer,
                              std::function<void()> meanwhile) {
  expected_.push_back({std::move(text), style, std::move(title), answer, std::move(meanwhile)});
}

MsgBoxResult FakeMessageBoxes::MsgBox(const std::string& text, int style, const std::string& title) {
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

FakePageFetch::FakePageFetch(Journal& journal, FakeEventLoop& loop) : journal_(journal), loop_(loop) {}

FakePageFetch::~FakePageFetch() = default;

std::unique_ptr<FetchTicket> FakePageFetch::FetchPage(const std::string& url, Done done) {
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

bool FakePageFetch::Answer(const std::string& url, const std::string& text) {
  for (const auto& weak : orders_) {
    const auto order = weak.lock();
    if (order && order->url == url && order->done) {
      Deliver(*order, text);
      return true;
    }
  }
  return false;
}

bool FakePageFetch::Waits(const std::string& url) const {
  for (const auto& weak : orders_) {
    const auto order = weak.lock();
    if (order && order->url == url && order->done) {
      return true;
    }
  }
  return false;
}

FakePageFetch::Ticket::Ticket(std::shared_ptr<Order> kept) : order(std::move(kept)) {}

void FakePageFetch::Deliver(Order& order, const std::string& text) {
  if (auto done = std::exchange(order.done, nullptr)) {
    done(text);
  }
}

FakeSound::FakeSound(Journal& journal) : journal_(journal) {}

unsigned FakeSound::waveOutGetNumDevs() { return devices; }

void FakeSound::sndPlaySoundA(const std::string& path, unsigned flags) {
  journal_.Call("sndPlaySoundA " + Quoted(path) + ", " + std::to_string(flags));
}

void FakeSound::Beep() { journal_.Call("Beep"); }

FakeInstanceCalls::FakeInstanceCalls(Journal& journal) : journal_(journal) {}

FakeInstanceCalls::~FakeInstanceCalls() = default;

Handle FakeInstanceCalls::CreateMutexA(const std::string& name, bool initialOwner) {
  journal_.Call("CreateMutexA " + Quoted(name) + (initialOwner ? ", owner" : ""));
  return 77;
}

unsigned long FakeInstanceCalls::GetLastError() const { return taken ? ERROR_ALREADY_EXISTS : 0; }

void FakeInstanceCalls::CloseHandle(Handle handle) { journal_.Call("CloseHandle " + std::to_string(handle)); }

bool FakeInstanceCalls::PrevInstance() { return previous; }

void FakeInstanceCalls::EnumWindows(const std::function<bool(Handle)>& each) {
  journal_.Call("EnumWindows");
  for (const auto& [window, mark] : marks) {
    if (!each(window)) {
      return;
    }
  }
}

Handle FakeInstanceCalls::GetPropA(Handle window, const std::string& name) {
  journal_.Call("GetPropA " + std::to_string(window) + ", " + Quoted(name));
  return marks[window];
}

bool FakeInstanceCalls::IsWindowVisible(Handle) { return windowVisible; }

bool FakeInstanceCalls::IsIconic(Handle) { return windowIconic; }

void FakeInstanceCalls::SendMessageA(Handle window, unsigned message, unsigned wParam, long lParam) {
  journal_.Call("SendMessageA " + std::to_string(window) + ", " + std::to_string(message) + ", " +
                std::to_string(wParam) + ", " + std::to_string(lParam));
}

void FakeInstanceCalls::SendMessageTimeoutA(Handle window, unsigned message, unsigned wParam,
                                            const CopyData& data, unsigned flags, unsigned timeout) {
  journal_.Call("SendMessageTimeoutA " + std::to_string(window) + ", " + std::to_string(message) + ", " +
                std::to_string(wParam) + ", " + std::to_string(flags) + ", " + std::to_string(timeout));
  sent = data;
}

void FakeInstanceCalls::SetForegroundWindow(Handle window) {
  journal_.Call("SetForegroundWindow " + std::to_string(window));
}

FakeSystemInfo::FakeSystemInfo() = default;

FakeSystemInfo::~FakeSystemInfo() = default;

std::string FakeSystemInfo::ProgramDirectory() const { return "/program"; }

std::string FakeSystemInfo::ProgramFileName() const { return "kivandra"; }

std::string FakeSystemInfo::CommandLine() const { return commandLine; }

std::string FakeSystemInfo::GetWindowsDirectoryA() const { return "/data"; }

std::string FakeSystemInfo::GetSystemDirectoryA() const { return "/data"; }

std::string FakeSystemInfo::SHGetSpecialFolderPathA(int folder) const {
  EXPECT_EQ(folder, CSIDL_FAVORITES);
  if (favorites.empty()) {
    throw PlatformError(kInvalidCall, "no favourites folder");
  }
  return favorites;
}

DllVersionInfo FakeSystemInfo::DllGetVersion() const { return engine; }

std::string FakeSystemInfo::FormatToday(const std::string& pattern) const {
  EXPECT_EQ(pattern, "d/m/yyyy");
  return today;
}

FakeFileCalls::FakeFileCalls(Journal& journal) : journal_(journal) {}

FakeFileCalls::~FakeFileCalls() = default;

void FakeFileCalls::Kill(const std::string& path) {
  journal_.Call("Kill " + Quoted(path));
  if (files.erase(path) == 0) {
    throw PlatformError(53, "File not found");
  }
}

std::string FakeFileCalls::Dir(const std::string& path) const {
  journal_.Call("Dir " + Quoted(path));
  return files.count(path) != 0 ? path.substr(path.rfind('/') + 1) : std::string();
}

void FakeFileCalls::Name(const std::string& path, const std::string& newPath) {
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

std::string FakeFileCalls::ReadFile(const std::string& path) const {
  journal_.Call("ReadFile " + Quoted(path));
  const auto found = files.find(path);
  if (found == files.end()) {
    throw PlatformError(53, "File not found");
  }
  return found->second;
}

void FakeFileCalls::WriteFile(const std::string& path, const std::string& bytes) {
  journal_.Call("WriteFile " + Quoted(path));
  if (folders.count(path) != 0) {
    throw PlatformError(75, "Path/File access error");
  }
  files[path] = bytes;
}

FolderListing FakeFileCalls::ListFolder(const std::string& path) const {
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

void FakeFileCalls::MakeFolder(const std::string& path) {
  journal_.Call("MakeFolder " + Quoted(path));
  if (files.count(path) != 0) {
    throw PlatformError(75, "Path/File access error");
  }
  for (std::string each = path; !each.empty(); each = Parent(each)) {
    folders.emplace(each, false);
  }
}

void FakeFileCalls::DeleteFolder(const std::string& path) {
  journal_.Call("DeleteFolder " + Quoted(path));
  if (folders.erase(path) == 0) {
    throw PlatformError(76, "Path not found");
  }
  std::erase_if(folders, [&](const auto& each) { return each.first.starts_with(path + "/"); });
  std::erase_if(files, [&](const auto& each) { return each.first.starts_with(path + "/"); });
}

std::string FakeFileCalls::Parent(const std::string& path) { return path.substr(0, path.rfind('/')); }

void FakeFileCalls::MoveFolder(const std::string& path, const std::string& newPath) {
  if (newPath.starts_with(path + "/") || folders.count(Parent(newPath)) == 0) {
    throw PlatformError(75, "Path/File access error");
  }
  MoveIn(folders, path, newPath);
  MoveIn(files, path, newPath);
}

FakeShellCalls::FakeShellCalls(Journal& journal) : journal_(journal) {}

void FakeShellCalls::Shell(const std::string& commandLine, int windowStyle) {
  journal_.Call("Shell " + Quoted(commandLine) + ", " + std::to_string(windowStyle));
}

void FakeShellCalls::SendKeys(const std::string& keys) { journal_.Call("SendKeys " + Quoted(keys)); }

FakeDefaultApplication::FakeDefaultApplication(Journal& journal) : journal_(journal) {}

void FakeDefaultApplication::Register() { journal_.Call("Register"); }

FakeClipboard::FakeClipboard(Journal& journal) : journal_(journal) {}

FakeClipboard::~FakeClipboard() = default;

void FakeClipboard::Clear() {
  journal_.Call("Clipboard.Clear");
  text.clear();
}

std::string FakeClipboard::GetText() {
  journal_.Call("Clipboard.GetText");
  return text;
}

FakeInternetSession::FakeInternetSession(Journal& journal) : journal_(journal) {}

void FakeInternetSession::InternetSetOptionA(int option) {
  journal_.Call("InternetSetOptionA " + std::to_string(option));
}

}  // namespace kivandra::fakes
