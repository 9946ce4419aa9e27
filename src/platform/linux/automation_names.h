// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace kivandra::linux_impl {

// Where other programs find the automation object on the session bus.
inline constexpr const char* kAutomationBusName = "org.kivandra.Kivandra";
inline constexpr const char* kAutomationPath = "/org/kivandra/Application";
inline constexpr const char* kAutomationInterface = "org.kivandra.Application";
/// Beside it, at the same object: what brings the frame to the front.
inline constexpr const char* kFrameInterface = "org.kivandra.Frame";

/// Name of every error with which a call of the object is answered; its number follows the last dot.
inline constexpr const char* kAutomationError = "org.kivandra.Error.Number";
/// The frame is not up, or in its first seconds: asking again later may help.
inline constexpr const char* kAutomationNotReady = "org.kivandra.Error.NotReady";

}  // namespace kivandra::linux_impl
