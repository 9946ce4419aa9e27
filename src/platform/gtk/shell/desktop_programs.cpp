// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/shell/desktop_programs.h"

#include <giomm/desktopappinfo.h>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

using Program = Glib::RefPtr<Gio::AppInfo>;
using Entry = Glib::RefPtr<Gio::DesktopAppInfo>;

constexpr std::array<std::string_view, 7> kWaysRound{
    "WebBrowser", "Network", "FileManager", "TerminalEmulator", "Development", "IDE", "ConsoleOnly"};
constexpr std::array<std::string_view, 5> kPageTypes{"text/html", "application/xhtml+xml",
                                                     "x-scheme-handler/http", "x-scheme-handler/https",
                                                     "inode/directory"};

/// Whether `list`, whose parts end in ";", has this part.
bool Has(std::string_view list, std::string_view part) {
  while (!list.empty()) {
    const std::size_t end = list.find(';');
    if (list.substr(0, end) == part) {
      return true;
    }
    list.remove_prefix(end == std::string_view::npos ? list.size() : end + 1);
  }
  return false;
}

bool IsHarmless(const Entry& entry) {
  const std::string categories = entry->get_categories();
  const auto types = entry->get_supported_types();
  const auto isIn = [&](std::string_view each) { return Has(categories, each); };
  return entry->should_show() && !entry->get_boolean("Terminal") &&
         std::none_of(kWaysRound.begin(), kWaysRound.end(), isIn) &&
         std::none_of(types.begin(), types.end(), [](const Glib::ustring& type) {
           return std::find(kPageTypes.begin(), kPageTypes.end(), type.raw()) != kPageTypes.end();
         });
}

/// The first harmless one, or null.
Program FirstOf(const std::vector<Program>& programs) {
  for (const Program& program : programs) {
    const auto entry = std::dynamic_pointer_cast<Gio::DesktopAppInfo>(program);
    if (entry && IsHarmless(entry)) {
      return entry;
    }
  }
  return {};
}

Program ForTypes(std::initializer_list<const char*> types) {
  for (const char* type : types) {
    if (Program program = FirstOf({Gio::AppInfo::get_default_for_type(type, false)})) {
      return program;
    }
  }
  for (const char* type : types) {
    if (Program program = FirstOf(Gio::AppInfo::get_all_for_type(type))) {
      return program;
    }
  }
  return {};
}

Program Where(bool (*wanted)(const Gio::DesktopAppInfo&)) {
  std::vector<Program> fitting;
  for (const Program& program : Gio::AppInfo::get_all()) {
    const auto entry = std::dynamic_pointer_cast<Gio::DesktopAppInfo>(program);
    if (entry && wanted(*entry)) {
      fitting.push_back(program);
    }
  }
  std::sort(fitting.begin(), fitting.end(),
            [](const Program& one, const Program& other) { return one->get_id() < other->get_id(); });
  return FirstOf(fitting);
}

/// The first answer of several ways to look.
Program Either(std::initializer_list<Program (*)()> ways) {
  for (const auto way : ways) {
    if (Program program = way()) {
      return program;
    }
  }
  return {};
}

}  // namespace

Program FindDesktopProgram(DesktopProgram program) {
  switch (program) {
    case DesktopProgram::Notepad:
      return Either(
          {[] { return ForTypes({"text/plain"}); },
           [] { return Where([](const auto& each) { return Has(each.get_categories(), "TextEditor"); }); }});
    case DesktopProgram::Wordpad:
      return Either({[] {
                       return ForTypes({"application/rtf", "text/rtf",
                                        "application/vnd.oasis.opendocument.text", "application/msword"});
                     },
                     [] {
                       return Where(
                           [](const auto& each) { return Has(each.get_categories(), "WordProcessor"); });
                     }});
    case DesktopProgram::Calculator:
      return Either(
          {[] { return Where([](const auto& each) { return Has(each.get_categories(), "Calculator"); }); },
           [] { return Where([](const auto& each) { return each.get_generic_name() == "Calculator"; }); }});
    case DesktopProgram::Volume:
      return Either(
          {[] { return Where([](const auto& each) { return Has(each.get_categories(), "Mixer"); }); },
           [] {
             return Where([](const auto& each) {
               return Has(each.get_categories(), "Audio") && Has(each.get_categories(), "Settings");
             });
           },
           [] {
             return Where([](const auto& each) { return each.get_generic_name() == "Volume Control"; });
           }});
  }
  return {};
}

void StartDesktopProgram(const Program& program) {
  const auto context = Gdk::Display::get_default()->get_app_launch_context();
  for (const char* name : kOwnStart) {
    context->unsetenv(name);
  }
  try {
    program->launch(std::vector<Glib::RefPtr<Gio::File>>{}, context);
  } catch (const Glib::Error& error) {
    throw PlatformError(kInvalidCall, error.what());
  }
}

}  // namespace kivandra::gtk
