// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/control.h"

namespace kivandra {

// Mouse messages over a link; the numbers are those of winuser.h.
inline constexpr unsigned WM_LBUTTONDOWN = 513;
inline constexpr unsigned WM_LBUTTONUP = 514;
inline constexpr unsigned WM_RBUTTONUP = 517;

/// Part of a text: bytes of its UTF-8, from `begin` up to, not including, `end`.
struct TextSpan {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// A text for reading, of any length, in which some spans are links.
class RichTextBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::RichTextBox;

  /// Replaces the text. The links are in rising order and do not overlap.
  virtual void SetText(const std::string& text, const std::vector<TextSpan>& links) = 0;
  [[nodiscard]] virtual std::string TextRange(const TextSpan& span) const = 0;
  /// Prints the whole text on the default printer, without a dialog; `document` is what the print queue
  /// shows. Events run inside until the print is handed over, so the window may close meanwhile; a second
  /// print, of this text or another one, is refused for so long. Throws PlatformError if there is no printer,
  /// if printing fails, and while another print is under way.
  virtual void PrintDoc(const std::string& document) = 0;
  /// Something happens over a link: a mouse message, or Enter on a link, which counts as WM_LBUTTONUP.
  virtual void OnLink(std::function<void(unsigned message, TextSpan link)> handler) = 0;
};

}  // namespace kivandra
