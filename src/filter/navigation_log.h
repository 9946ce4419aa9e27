// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "platform/file_calls.h"
#include "platform/registry_calls.h"
#include "platform/web_browser.h"

namespace kivandra {

/// What `LogURL` of a window holds before the window has logged anything. kept on purpose: a day's first
/// entry ends with what its window's buffer held, so this text stands at the end of many a day.
inline constexpr const char* kLogURLDesignText = "LogURL";

/// The folder of the logs, with its closing slash. The platform makes it when the program is set up; here
/// nobody does.
[[nodiscard]] std::string LogFolder();
/// The log file of a day by its name: day, month and year run together.
[[nodiscard]] std::string LogFile(const std::string& day);

/// One finished download: puts an entry for the page that `browser` shows before the day's log, if the parent
/// wants visits recorded. `LogURL` is the buffer of the browser's window: the file's text is read into it,
/// the entry goes to its front, and it is written back whole. If there is no file, or it can't be read, the
/// buffer keeps what it had. A file that is there but can't be read is given another name first, so that no
/// record is lost; if that fails nothing is written. Passes over whatever fails; runs no events.
void LogVisit(RegistryCalls& registry, FileCalls& files, const WebBrowser& browser, std::string& LogURL);

}  // namespace kivandra
