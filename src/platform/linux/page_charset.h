// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kivandra::linux_impl {

/// A charset under the name that the decoder knows it by; empty if there is none.
using Charset = std::string;

inline constexpr char kUtf8[] = "UTF-8";
inline constexpr char kUtf16Le[] = "UTF-16LE";
inline constexpr char kUtf16Be[] = "UTF-16BE";
inline constexpr char kWestern[] = "windows-1252";
inline constexpr char kIso2022Jp[] = "ISO_2022,locale=ja,version=3";
/// ASCII, and every other byte as a sign of its own that is no letter.
inline constexpr char kUserDefined[] = "x-user-defined";

/// The charset that the web's standard means by a label ("latin1" means windows-1252); empty for an unknown
/// one.
[[nodiscard]] Charset CharsetOfLabel(std::string_view label);

/// The readings in which the engine may show a page, the likeliest first; never empty.
///
/// A byte order mark counts before the charset of the `Content-Type` header, and that before what the page's
/// head declares. These are certain, so they give one reading. A page that declares nothing is shown as
/// windows-1252, but a frame is shown in the charset of the page around it, which is not known here: so more
/// than one reading is given.
[[nodiscard]] std::vector<Charset> ReadingsOf(std::string_view bytes, std::string_view contentType);

}  // namespace kivandra::linux_impl
