// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/control.h"

namespace kivandra {

enum class ToolKind { Button, Edit, Separator, Spacer, Hosted };
enum class ToolDisplay { Image, Text, ImageAndText, ImageAboveText };

/// Design-time data of one tool.
struct ToolData {
  std::string name;
  std::string caption;  ///< "&" marks the access key
  std::string toolTip;
  std::string subBand;  ///< name of the drop-down band that it opens, or empty
  ToolKind kind = ToolKind::Button;
  ToolDisplay display = ToolDisplay::Image;
  int image = -1;    ///< number of the picture, -1 for none
  Twips width = -1;  ///< -1 for automatic
  bool enabled = true;
};

enum class BandKind { ToolBar, DropDown, SideBar, ChildBand };

/// Design-time data of one band.
struct BandData {
  std::string name;
  std::string caption;
  BandKind kind = BandKind::ToolBar;
  std::string childBand;  ///< the band inside this one, or empty
  std::vector<ToolData> tools;
  int row = 0;  ///< tool bars: place from the top, counted from 1
};

class Tool {
 public:
  virtual ~Tool() = default;

  [[nodiscard]] virtual const std::string& Name() const = 0;
  [[nodiscard]] virtual const std::string& Caption() const = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual Twips Width() const = 0;
  virtual void SetWidth(Twips width) = 0;
  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  /// Hosts an ordinary control of the form in the tool's gap; null lets it go.
  virtual void SetCustom(Control* control) = 0;
};

class Band {
 public:
  virtual ~Band() = default;

  /// Throws PlatformError for an unknown name; so does BarControl::Bands.
  virtual Tool& Tools(const std::string& name) = 0;
  [[nodiscard]] virtual bool Visible() const = 0;
  virtual void SetVisible(bool visible) = 0;
  [[nodiscard]] virtual Twips Width() const = 0;
  virtual void SetWidth(Twips width) = 0;
  [[nodiscard]] virtual Twips Height() const = 0;
};

/// The bars of the frame: bands of tools, laid down once from data.
class BarControl : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::BarControl;

  /// Makes every band and tool; to be called once, before any other operation.
  virtual void Lay(const std::vector<BandData>& bands) = 0;
  virtual Band& Bands(const std::string& name) = 0;
  virtual void OnToolClick(std::function<void(Tool&)> handler) = 0;
  /// A person has gone into an edit tool.
  virtual void OnToolEntered(std::function<void(Tool&)> handler) = 0;
};

}  // namespace kivandra
