// SPDX-License-Identifier: GPL-3.0-or-later
// The frame has a new size: the two bars fill its width. Spacer and AddressBar stretch, the other tools keep
// their widths.
#include <cstdint>
#include <initializer_list>
#include <limits>

#include "frame/frm_main.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

// The room that the bars take between their tools, in twips; fitted by eye.
constexpr Twips kMainBarMargin = 60;
constexpr Twips kBonusBarMargin = 270;
constexpr Twips kGoWidths = 7;

/// Number of the error "overflow".
constexpr long kOverflow = 6;

/// A running sum of widths: a signed number of 16 bits that fails when it would go over.
class WidthSum {
 public:
  void Add(Twips width) {
    const Twips sum = sum_ + width;
    if (sum > std::numeric_limits<std::int16_t>::max() || sum < std::numeric_limits<std::int16_t>::min()) {
      throw PlatformError(kOverflow, "Overflow");
    }
    sum_ = sum;
  }
  [[nodiscard]] Twips Value() const { return sum_; }

 private:
  Twips sum_ = 0;
};

WidthSum SumOfWidths(Band& band, std::initializer_list<const char*> tools) {
  WidthSum sum;
  for (const char* tool : tools) {
    sum.Add(band.Tools(tool).Width());
  }
  return sum;
}

}  // namespace

void frmMain::Form_Resize() { MDIForm_Resize(); }

void frmMain::MDIForm_Resize() {
  // Whatever fails ends it; what is set so far stays, and the next resize tries again.
  attempt([&] {
    if (Window().WindowState() != WindowState::Minimized) {
      FillMainBar();
      FillBonusBar();
    }
  });
}

void frmMain::FillMainBar() {
  Band& bar = BonusBar().Bands("MainBar");
  bar.SetWidth(Window().ScaleWidth());
  const Twips buttons =
      SumOfWidths(bar, {"Back", "Forward", "Refresh", "Home", "Stop", "Print", "Lock", "Tool68"}).Value();
  Tool& spacer = bar.Tools("Spacer");
  spacer.SetWidth(Window().ScaleWidth() -
                  (bar.Tools("Banner").Width() + Window().Get<PictureBox>("Logo").Width() + buttons));
  spacer.SetWidth(spacer.Width() - bar.Tools("LogoBox").Width() + kMainBarMargin);
}

void frmMain::FillBonusBar() {
  Band& bar = BonusBar().Bands("Bonus Bar");
  bar.SetWidth(Window().ScaleWidth());
  WidthSum tools = SumOfWidths(bar, {"SearchCriteria", "Find", "Site Of The Month", "Tools", "Help", "sep1",
                                     "sep2", "sep3", "sep4", "sep5"});
  tools.Add(kGoWidths * bar.Tools("btnGo").Width());
  bar.Tools("AddressBar").SetWidth(Window().ScaleWidth() - tools.Value() + kBonusBarMargin);
}

}  // namespace kivandra
