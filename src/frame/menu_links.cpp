// SPDX-License-Identifier: GPL-3.0-or-later
#include "frame/menu_links.h"

#include "core/site_page.h"

namespace kivandra {

const std::vector<MenuLink>& MenuLinks() {
  static const std::vector<MenuLink> links = {
      {"mnuRegister", SitePage("/help")},
      {"mnuSupport", SitePage("/support.asp")},
      {"mnuListSite", SitePage("/getlisted")},
      {"mnuDisney", PageOf(hosts::kDisneyHost, "")},
      {"mnuYahooligans", PageOf(hosts::kYahooligansHost, "")},
      {"mnuBerits", PageOf(hosts::kBeritsHost, "")},
      {"mnuSesamestreet", PageOf(hosts::kSesameStreetHost, "")},
      {"mnubarney", PageOf(hosts::kBarneyHost, "")},
      {"mnuChildrenTelevisionWorkshop", PageOf(hosts::kTelevisionWorkshopHost, "")},
      {"Mnu4Kids", PageOf(hosts::k4KidsHost, "")},
      {"mnuFamilyInternet", PageOf(hosts::kFamilyInternetHost, "")},
      {"mnuWorldLingo", PageOf(hosts::kWorldLingoHost, "")},
      {"mnuSystran", PageOf(hosts::kSystranHost, "/systran/cgi")},
  };
  return links;
}

}  // namespace kivandra
