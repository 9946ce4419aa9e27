// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace kivandra {

using Handle = std::uintptr_t;

inline constexpr unsigned long ERROR_ALREADY_EXISTS = 183;  // winerror.h

// Messages and commands for windows of another process; the numbers are those of winuser.h.
inline constexpr unsigned WM_COPYDATA = 0x004A;
inline constexpr unsigned WM_SYSCOMMAND = 0x0112;
inline constexpr unsigned SC_RESTORE = 0xF120;
inline constexpr unsigned SMTO_NORMAL = 0;

/// What WM_COPYDATA carries.
struct CopyData {
  std::uintptr_t dwData = 0;
  std::string bytes;  ///< cbData is its length, lpData its first byte
};

/// A mutex known to the whole session by its name, and the top-level windows of other processes.
class InstanceCalls {
 public:
  virtual ~InstanceCalls() = default;

  /// Creates or opens the mutex; GetLastError then tells ERROR_ALREADY_EXISTS if another process of this user
  /// holds it. The system frees it when the process ends, however it ends. 0 if it can't be made at all.
  virtual Handle CreateMutexA(const std::string& name, bool initialOwner) = 0;
  /// Error of the last CreateMutexA, 0 for none.
  [[nodiscard]] virtual unsigned long GetLastError() const = 0;
  virtual void CloseHandle(Handle handle) = 0;
  /// Whether an earlier instance runs, told without a mutex.
  [[nodiscard]] virtual bool PrevInstance() = 0;

  /// Calls `each` for every top-level window until it returns false.
  virtual void EnumWindows(const std::function<bool(Handle)>& each) = 0;
  [[nodiscard]] virtual Handle GetPropA(Handle window, const std::string& name) = 0;
  [[nodiscard]] virtual bool IsWindowVisible(Handle window) = 0;
  [[nodiscard]] virtual bool IsIconic(Handle window) = 0;
  virtual void SendMessageA(Handle window, unsigned message, unsigned wParam, long lParam) = 0;
  /// Sends WM_COPYDATA and waits for the receiver, at most `timeout` milliseconds.
  virtual void SendMessageTimeoutA(Handle window, unsigned message, unsigned wParam, const CopyData& data,
                                   unsigned flags, unsigned timeout) = 0;
  virtual void SetForegroundWindow(Handle window) = 0;
};

}  // namespace kivandra
