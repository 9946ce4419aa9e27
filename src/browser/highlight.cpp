// SPDX-License-Identifier: GPL-3.0-or-later
// A word of the page gets a yellow ground, everywhere it stands.
#include "browser/frm_browser.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// As many places are painted in one call at the most.
constexpr int kMostPaints = 5000;

}  // namespace

Variant frmBrowser::highlight(const std::string& str) {
  HTMLFindText(str);
  return Empty{};
}

void frmBrowser::HTMLFindText(const std::string& SearchStr) {
  const auto self = shared_from_this();
  attempt([&] {
    PageFrame* page = brwWebBrowser_.Page();
    if (const auto document = page != nullptr ? page->Document() : nullptr) {
      document->PaintText(SearchStr, kMostPaints);
    }
  });
}

}  // namespace kivandra
