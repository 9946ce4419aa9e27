// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kivandra::gtk {

/// Longest address that the engine is asked to load, in bytes.
inline constexpr std::size_t kLongestAddress = 64 * 1024;

/// The address that the engine makes of a text given to Navigate, in the engine's own spelling; empty if the
/// text is no address at all. A text without a scheme stands for a web address, one that begins with a slash
/// for a file, whose name may hold any sign.
[[nodiscard]] std::string EngineSpelling(const std::string& text);

/// The address to judge for a text given to Navigate: the engine's spelling, but the text itself if the
/// engine only puts a slash behind a bare host, or if the text is no address.
[[nodiscard]] std::string SpellingToJudge(const std::string& text, const std::string& engineSpelling);

/// Whether an allowed navigation that a page began may load: web addresses, documents without an address of
/// their own, `data:` and `blob:`. Anything else would start other programs or show what no fetch can see.
[[nodiscard]] bool PageMayLoad(std::string_view address);

/// Whether an allowed navigation that the program began may load: what a page may, and files.
[[nodiscard]] bool ProgramMayLoad(std::string_view address);

/// Whether the address is that of a document without an address of its own.
[[nodiscard]] bool IsBlankDocument(std::string_view address);

/// The address up to its fragment.
[[nodiscard]] std::string WithoutFragment(const std::string& address);

/// The scheme in lower case, without the colon; empty if there is none.
[[nodiscard]] std::string SchemeOf(std::string_view address);

}  // namespace kivandra::gtk
