#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Writes code_pages.cpp: the upper halves of the one-byte code pages that a rich text can name.

The tables come from Python's codecs. A byte that a page leaves open is the replacement character."""

PAGES = {437: "cp437", 850: "cp850", 852: "cp852", 866: "cp866", 874: "cp874", 1250: "cp1250", 1251: "cp1251",
         1252: "cp1252", 1253: "cp1253", 1254: "cp1254", 1255: "cp1255", 1256: "cp1256", 1257: "cp1257",
         1258: "cp1258", 10000: "mac_roman"}


def point(codec: str, byte: int) -> int:
    return ord(bytes([byte]).decode(codec, "replace"))


def main() -> None:
    # REUSE-IgnoreStart
    print("// SPDX-License-Identifier: GPL-3.0-or-later")
    # REUSE-IgnoreEnd
    print("// Made by make_code_pages.py; do not edit.")
    print('#include "support/code_pages.h"\n')
    print("#include <array>\n#include <cstddef>\n")
    print("namespace kivandra {\n\nnamespace {\n")
    print("// clang-format off")
    print("struct CodePage {\n  int number;\n  std::array<char16_t, 128> upper;  // of the bytes from 0x80 on\n};\n")
    print(f"constexpr std::array<CodePage, {len(PAGES)}> kCodePages = {{{{")
    for number, codec in PAGES.items():
        points = [f"0x{point(codec, byte):04X}" for byte in range(0x80, 0x100)]
        print(f"    {{{number}, {{")
        for row in range(0, 128, 16):
            print("        " + ", ".join(points[row:row + 16]) + ",")
        print("    }},")
    print("}};")
    print("// clang-format on\n\n}  // namespace\n")
    print("""char32_t CodePagePoint(int codePage, unsigned char byte) {
  constexpr unsigned char kUpperHalf = 0x80;
  if (byte < kUpperHalf) {
    return byte;
  }
  for (const CodePage& page : kCodePages) {
    if (page.number == codePage) {
      return page.upper[static_cast<std::size_t>(byte - kUpperHalf)];
    }
  }
  return 0xFFFD;  // the replacement character
}

}  // namespace kivandra""")


main()
