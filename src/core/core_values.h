// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>
#include <string>

#include "platform/instance_calls.h"

namespace kivandra {

// The process-wide values of the application core: plain values, read and written directly, on the one
// thread.

inline std::array<std::string, 15>
    SettingNames;                         ///< names that the settings store accepts; filled by SubMain
inline std::string SkinFile;              ///< full path of the skin in force
inline std::string ParentPassword;        ///< memory copy of the stored password
inline std::string LogDayName;            ///< the day's log name: day, month, year without padding
inline std::string WindowsDirectory;      ///< root of the log folder, no closing slash
inline Handle InstanceMutex = 0;          ///< 0 while none is held
inline Handle RunningFrameHandle = 0;     ///< 0 until FindRunningFrame finds a window
inline bool UsePrevInstanceTest = false;  ///< kept on purpose: nothing sets it
inline bool SessionAllowGranted = false;  ///< the prompt gave the right password for a session grant
inline bool PasswordOpen = false;         ///< frmPassword is loaded; kept up to date, asked by nobody
inline bool OptionsOpen = false;
inline bool NavigationOpen = false;
inline bool TipOpen = false;
inline bool FindDialogOpen = false;  ///< true while the find command sends its key strokes

/// Fills SettingNames; before any setting is read or written.
void FillSettingNames();
/// Puts every value back to what it is at the start of a process.
void ResetCoreValues();

}  // namespace kivandra
