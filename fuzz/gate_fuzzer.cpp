// SPDX-License-Identifier: GPL-3.0-or-later
// The whole decision against what must hold of it whatever the navigation is. The input is a byte of switches
// and then lines: the address, the text of the frame's box, an allowed row, a forbidden row; the rest is the
// page.
#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

#include "filter/gate.h"
#include "filter/page_scan.h"
#include "hosts.h"
#include "must.h"

namespace {

using namespace kivandra;
using namespace kivandra::fuzz;

bool Holds(std::string_view text, std::string_view part) { return text.find(part) != std::string_view::npos; }

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0 || size > 65536) {
    return 0;
  }
  const unsigned switches = data[0];
  std::string_view rest(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto line = [&] {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string taken(rest.substr(0, end));
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return taken;
  };
  const std::string url = line();
  const std::string box = line();
  AllowedDomainsTable allowed;
  allowed[1] = line();
  BadWordsTable bad;
  bad[1] = line();
  const std::string page(rest);
  const bool startup = (switches & 1U) != 0;
  const bool back = (switches & 2U) != 0;
  const bool noMail = (switches & 4U) != 0;
  const bool filter = (switches & 8U) != 0;
  const bool fetchFails = (switches & 16U) != 0;

  int fetches = 0;
  const GateVerdict verdict =
      DecideNavigation(url, box, startup, back, noMail, filter, allowed, bad, [&](const std::string& asked) {
        ++fetches;
        Must(asked == url, "the page of the address itself is fetched");
        if (fetchFails) {
          throw PlatformError(kInvalidCall, "no page");
        }
        return page;
      });

  const bool trusted = Holds(url, hosts::kTrustedSite1) || Holds(box, hosts::kTrustedSite1) ||
                       Holds(url, hosts::kTrustedSite2) || Holds(url, hosts::kTrustedSite3) ||
                       Holds(url, hosts::kTrustedSite4) || Holds(url, hosts::kTrustedSite5);
  const bool early = url == "http:///" || url.empty() || trusted || Holds(url, "res://") || startup || back;
  const bool isAllowed = !allowed[1].empty() && Holds(url, allowed[1]);
  const bool forbidden = !bad[1].empty() && Holds(url, bad[1]);
  Must((verdict == GateVerdict::PassEarly) == early, "an early pass has one of its reasons");
  if (!early) {
    const bool mail = noMail && Holds(url, "mailto:");
    Must((verdict == GateVerdict::RefuseMail) == mail, "mail is refused when it is switched off");
    if (!mail) {
      Must((verdict == GateVerdict::PassUnfiltered) == !filter, "an unfiltered pass needs the filter off");
    }
    if (!mail && filter) {
      Must((verdict == GateVerdict::PassAllowed) == isAllowed, "an allowed row outranks the rest");
      Must(isAllowed || !forbidden || verdict == GateVerdict::Block, "a forbidden row blocks");
      const bool searchHome = !isAllowed && !forbidden && url == hosts::kSearchHome;
      Must((verdict == GateVerdict::PassSearchHome) == searchHome, "the search page is exactly that page");
      const bool byPage = !isAllowed && !forbidden && !searchHome;
      Must(fetches == (byPage ? 1 : 0), "the page is fetched only if nothing else decides");
      Must(!byPage || !(fetchFails || page.empty()) || verdict == GateVerdict::Block, "no page is a block");
      Must(!byPage || fetchFails || (verdict == GateVerdict::Block) == PageScanFinds(page, bad),
           "the page decides");
    }
  }
  Must(fetches <= 1, "one fetch at most");
  return 0;
}
