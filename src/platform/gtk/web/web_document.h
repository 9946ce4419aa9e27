// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <webkit/webkit.h>

#include <memory>
#include <string>

#include "platform/web_browser.h"

namespace kivandra::gtk {

/// Stands as long as a page does: dropped when the next one takes its place, or when its window closes.
struct PageLife {
  WebKitWebView* view;  // not owned; it outlives the page
};

/// The document of a page. May be kept longer than the page: then it does nothing.
class WebDocument final : public HtmlDocument {
 public:
  explicit WebDocument(std::weak_ptr<PageLife> page) : page_(std::move(page)) {}

  void PaintText(const std::string& text, int bound) override;

 private:
  std::weak_ptr<PageLife> page_;
};

}  // namespace kivandra::gtk
