// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop entry's command: opens an address or an HTML file in the running program, which it starts if
// need be. The program itself takes no address on its command line.
#include <cstdio>
#include <string>
#include <string_view>

#include "core/instance.h"
#include "platform/linux/hand_over.h"
#include "platform/linux/instance_lock.h"
#include "platform/linux/system_info.h"
#include "platform/platform_error.h"

int main(int count, char** words) {
  using namespace kivandra;
  constexpr const char* kUsage = "Usage: kivandra-open [ADDRESS or HTML FILE]\n";
  const std::string word = count > 1 ? words[1] : "";
  if (word == "--help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (count > 2 || word.starts_with("--")) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  std::string problem;
  try {
    problem = linux_impl::HandOver(linux_impl::AddressOf(word),
                                   {linux_impl::LinuxSystemInfo({}).ProgramDirectory() + "/kivandra",
                                    [] { return linux_impl::MutexIsHeld(kInstanceMutexName); }});
  } catch (const PlatformError& error) {
    problem = error.what();
  }
  if (!problem.empty()) {
    std::fprintf(stderr, "kivandra-open: %s\n", problem.c_str());
  }
  // Never a failure: a desktop would then give the address to the next browser, which filters nothing.
  return 0;
}
