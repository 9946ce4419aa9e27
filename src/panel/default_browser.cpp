// SPDX-License-Identifier: GPL-3.0-or-later
#include "panel/default_browser.h"

#include <array>
#include <string>

#include "core/registry.h"
#include "support/attempt.h"

namespace kivandra {
namespace {

/// The directory of the program with a closing slash, then the program's own name without its ending.
std::string ProgramPath(const SystemInfo& system) {
  std::string path = system.ProgramDirectory();
  if (!path.ends_with('/')) {
    path += '/';
  }
  const std::string name = system.ProgramFileName();
  return path + name.substr(0, name.rfind('.'));
}

/// Stands in the table for the command that opens an address.
constexpr const char* kOpenCommand = nullptr;

/// One write: the default value of a key.
struct Write {
  HKEY root;
  const char* section;
  const char* data;
};

/// kept on purpose: the order, the repetitions (the last write to a place is the one that stays), the second
/// place of ddeexec below command, and the two spellings of the topic.
constexpr std::array<Write, 26> kWrites{{
    {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\command)", kOpenCommand},
    {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\command\ddeexec)", kOpenCommand},
    {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\ddeexec\Application)", "KVD"},
    {HKEY_LOCAL_MACHINE, R"(KVD\shell\open\ddeexec\topic)", "WWW_OpenURL"},
    {HKEY_LOCAL_MACHINE, R"(http\shell\open\command)", kOpenCommand},
    {HKEY_LOCAL_MACHINE, R"(http\shell\open\ddeexec\Application)", "KVD"},
    {HKEY_CLASSES_ROOT, R"(KVD\shell\open\command)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", "KVD"},
    {HKEY_CLASSES_ROOT, R"(KVD\shell\open\ddeexec)", "WWW_OpenUrl"},
    {HKEY_CLASSES_ROOT, ".htm", "KVD"},
    {HKEY_CLASSES_ROOT, ".html", "KVD"},
    {HKEY_CLASSES_ROOT, R"(http\shell\open)", "&Open KVD"},
    {HKEY_CLASSES_ROOT, R"(http\shell\open)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(http\shell\open\ddeexec\Application)", "KVD"},
    {HKEY_CLASSES_ROOT, R"(http\DefaultIcon)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(http\shell\open\command)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(https\shell\open)", "&Open KVD"},
    {HKEY_CLASSES_ROOT, R"(https\shell\open)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(https\shell\open\ddeexec\Application)", "KVD"},
    {HKEY_CLASSES_ROOT, R"(https\DefaultIcon)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(https\shell\open\command)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(ftp\shell\open\ddeexec\Application)", "KVD"},
    {HKEY_CLASSES_ROOT, R"(ftp\shell\open\command)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(gopher\shell\open\command)", kOpenCommand},
    {HKEY_CLASSES_ROOT, R"(gopher\shell\open\ddeexec\Application)", "KVD"},
}};

void AssociateFiles(const DefaultBrowserServices& services, const std::string& exePath) {
  constexpr long kIcon = 1;
  cRegistry registry(services.registry, services.system.ProgramFileName());
  attempt([&] {
    registry.CreateEXEAssociation(exePath, "KVD.HTM", "KVD", "HTM", "&Open", false, "&Print", false, "&New",
                                  false, "", kIcon);
  });
  attempt([&] {
    registry.CreateEXEAssociation(exePath, "KVD.HTML", "KVD", "HTML", "&Open", false, "&Print", false, "&New",
                                  false, "", kIcon);
  });
}

}  // namespace

void SetAsDefaultBrowser(const DefaultBrowserServices& services) {
  const std::string exePath = ProgramPath(services.system) + ".exe";
  // kept on purpose: no quotation marks, so a directory with blanks stays unquoted.
  const std::string openCommand = exePath + " %1";

  AssociateFiles(services, exePath);

  cRegistry registry(services.registry, services.system.ProgramFileName());
  registry.SetClassKey(HKEY_LOCAL_MACHINE);
  // kept on purpose: two keys are selected, and nothing is written to them.
  registry.SetSectionKey(R"(KVD\shell\open\command\ddeexe\Application)");
  registry.SetSectionKey(R"(KVD\shell\open\command\ddeexe\topic)");
  registry.SetValueType(REG_SZ);
  for (const Write& write : kWrites) {
    registry.SetClassKey(write.root);
    registry.SetSectionKey(write.section);
    registry.SetValueType(REG_SZ);
    attempt([&] { registry.SetValue(write.data == kOpenCommand ? openCommand : std::string(write.data)); });
  }
  attempt([&] { services.desktop.Register(); });
  services.boxes.MsgBox("Please restart the computer to make all changes effective.");
}

}  // namespace kivandra
