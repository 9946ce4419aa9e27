// SPDX-License-Identifier: GPL-3.0-or-later
// Rich text: whatever the bytes are, reading ends and gives sound UTF-8 or says that they are none; whatever
// a text is, what is written of it is a document that reads back as the same text.
#include <cstdint>
#include <string>
#include <string_view>

#include "must.h"
#include "support/rich_text.h"

using namespace kivandra;
using namespace kivandra::fuzz;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  for (const std::string& document : {bytes, "{\\rtf1 " + bytes}) {
    if (const auto text = ReadRichText(document)) {
      Must(IsSound(*text), "what is read is sound UTF-8");
      const auto again = ReadRichText(WriteRichText(*text));
      Must(again.has_value(), "what is written is rich text");
      // Controls and line ends settle the first time, and then nothing changes any more.
      Must(ReadRichText(WriteRichText(*again)) == again, "a text that was read comes back");
    }
  }
  const auto once = ReadRichText(WriteRichText(bytes));
  Must(once && IsSound(*once), "any text can be written");
  Must(ReadRichText(WriteRichText(*once)) == once, "a written text comes back");
  return 0;
}
