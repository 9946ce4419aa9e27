// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace kivandra::linux_impl {

/// One charset of the decoder and the labels under which pages on the web name it, in lower case, parted by
/// blanks.
struct CharsetLabels {
  std::string_view charset;
  std::string_view labels;
};

/// The labels of the Encoding Standard. Charsets that the standard refuses to decode ("replacement") are read
/// as windows-1252: the engine shows nothing of such a page, and a scan of its bytes does no harm. The
/// decoder has no ISO-8859-16, whose letters lie where those of ISO-8859-2 do.
inline constexpr CharsetLabels kCharsetLabels[] = {
    {"UTF-8", "utf-8 utf8 unicode-1-1-utf-8 unicode11utf8 unicode20utf8 x-unicode20utf8"},
    {"windows-1252",
     "windows-1252 cp1252 x-cp1252 iso-8859-1 iso8859-1 iso88591 iso_8859-1 iso_8859-1:1987 iso-ir-100 "
     "latin1 l1 cp819 "
     "ibm819 csisolatin1 ascii us-ascii ansi_x3.4-1968 replacement csiso2022kr hz-gb-2312 iso-2022-cn "
     "iso-2022-cn-ext "
     "iso-2022-kr"},
    {"ISO-8859-2",
     "iso-8859-2 iso8859-2 iso88592 iso_8859-2 iso_8859-2:1987 iso-ir-101 latin2 l2 csisolatin2 iso-8859-16"},
    {"ISO-8859-3",
     "iso-8859-3 iso8859-3 iso88593 iso_8859-3 iso_8859-3:1988 iso-ir-109 latin3 l3 csisolatin3"},
    {"ISO-8859-4",
     "iso-8859-4 iso8859-4 iso88594 iso_8859-4 iso_8859-4:1988 iso-ir-110 latin4 l4 csisolatin4"},
    {"ISO-8859-5",
     "iso-8859-5 iso8859-5 iso88595 iso_8859-5 iso_8859-5:1988 iso-ir-144 cyrillic csisolatincyrillic"},
    {"ISO-8859-6",
     "iso-8859-6 iso8859-6 iso88596 iso_8859-6 iso_8859-6:1987 iso-ir-127 iso-8859-6-e iso-8859-6-i "
     "csiso88596e "
     "csiso88596i arabic asmo-708 ecma-114 csisolatinarabic"},
    {"ISO-8859-7",
     "iso-8859-7 iso8859-7 iso88597 iso_8859-7 iso_8859-7:1987 iso-ir-126 greek greek8 ecma-118 elot_928 "
     "sun_eu_greek "
     "csisolatingreek"},
    {"ISO-8859-8",
     "iso-8859-8 iso8859-8 iso88598 iso_8859-8 iso_8859-8:1988 iso-ir-138 iso-8859-8-e iso-8859-8-i "
     "csiso88598e "
     "csiso88598i hebrew visual logical csisolatinhebrew"},
    {"ISO-8859-10", "iso-8859-10 iso8859-10 iso885910 iso-ir-157 latin6 l6 csisolatin6"},
    {"ISO-8859-13", "iso-8859-13 iso8859-13 iso885913"},
    {"ISO-8859-14", "iso-8859-14 iso8859-14 iso885914"},
    {"ISO-8859-15", "iso-8859-15 iso8859-15 iso885915 iso_8859-15 l9 csisolatin9"},
    {"IBM866", "ibm866 866 cp866 csibm866"},
    {"KOI8-R", "koi8-r koi koi8 koi8_r cskoi8r"},
    {"KOI8-U", "koi8-u koi8-ru"},
    {"macintosh", "macintosh mac x-mac-roman csmacintosh"},
    {"x-mac-cyrillic", "x-mac-cyrillic x-mac-ukrainian"},
    {"windows-874", "windows-874 dos-874 iso-8859-11 iso8859-11 iso885911 tis-620"},
    {"windows-1250", "windows-1250 cp1250 x-cp1250"},
    {"windows-1251", "windows-1251 cp1251 x-cp1251"},
    {"windows-1253", "windows-1253 cp1253 x-cp1253"},
    {"windows-1254",
     "windows-1254 cp1254 x-cp1254 iso-8859-9 iso8859-9 iso88599 iso_8859-9 iso_8859-9:1989 iso-ir-148 "
     "latin5 l5 "
     "csisolatin5"},
    {"windows-1255", "windows-1255 cp1255 x-cp1255"},
    {"windows-1256", "windows-1256 cp1256 x-cp1256"},
    {"windows-1257", "windows-1257 cp1257 x-cp1257"},
    {"windows-1258", "windows-1258 cp1258 x-cp1258"},
    {"gb18030", "gb18030 gbk x-gbk gb2312 gb_2312 gb_2312-80 csgb2312 csiso58gb231280 chinese iso-ir-58"},
    {"Big5-HKSCS", "big5 big5-hkscs cn-big5 csbig5 x-x-big5"},
    {"EUC-JP", "euc-jp x-euc-jp cseucpkdfmtjapanese"},
    {"ISO_2022,locale=ja,version=3", "iso-2022-jp csiso2022jp"},
    {"windows-31j", "shift_jis shift-jis sjis x-sjis ms932 ms_kanji windows-31j csshiftjis"},
    {"windows-949",
     "euc-kr cseuckr korean ks_c_5601-1987 ks_c_5601-1989 ksc5601 ksc_5601 csksc56011987 iso-ir-149 "
     "windows-949"},
    {"UTF-16LE", "utf-16 utf-16le ucs-2 unicode unicodefeff csunicode iso-10646-ucs-2"},
    {"UTF-16BE", "utf-16be unicodefffe"},
    {"x-user-defined", "x-user-defined"},
};

}  // namespace kivandra::linux_impl
