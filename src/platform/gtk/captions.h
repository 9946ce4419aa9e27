// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <glibmm.h>

#include <string>

namespace kivandra::gtk {

/// "&Back" as the toolkit marks the access key: "_Back". A doubled "&" stands for itself.
[[nodiscard]] Glib::ustring MnemonicOf(const std::string& caption);
/// The way back: "_Back" is "&Back".
[[nodiscard]] std::string CaptionOf(const Glib::ustring& mnemonic);
/// The words alone, without the mark.
[[nodiscard]] std::string WordsOfCaption(const std::string& caption);

}  // namespace kivandra::gtk
