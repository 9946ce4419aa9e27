// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_document.h"

#include "platform/gtk/web/web_frames.h"
#include "platform/gtk/web/web_highlight_script.h"

namespace kivandra::gtk {

void WebDocument::PaintText(const std::string& text, int bound) {
  const std::shared_ptr<PageLife> page = page_.lock();
  if (!page || text.empty()) return;
  // Text that is no UTF-8 and a NUL become the sign that the engine itself shows in their place.
  char* valid = g_utf8_make_valid(text.data(), static_cast<gssize>(text.size()));
  GVariantDict arguments;
  g_variant_dict_init(&arguments, nullptr);
  g_variant_dict_insert(&arguments, "text", "s", valid);
  g_variant_dict_insert(&arguments, "bound", "i", bound);
  g_free(valid);
  webkit_web_view_call_async_javascript_function(page->view, kHighlightScript, -1,
                                                 g_variant_dict_end(&arguments), kOwnWorld, nullptr, nullptr,
                                                 nullptr, nullptr);
}

}  // namespace kivandra::gtk
