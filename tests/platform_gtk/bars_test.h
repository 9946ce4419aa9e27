// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

#include "platform/combo_box.h"
#include "platform/gtk/bars/bar_tool.h"
#include "platform/picture_box.h"
#include "platform/skin_form.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {

/// The frame with bars of every kind in it.
class BarsFixture : public WindowTest {
 protected:
  BarsFixture();
  ~BarsFixture() override;

  static ToolData Plain(const std::string& name, int image, ToolDisplay display);
  static ToolData Above(const std::string& name, int image, bool enabled = true);
  static ToolData Beside(const std::string& name, int image, const std::string& subBand = {});
  static ToolData Drawn(const std::string& name, const std::string& caption, int image);
  static ToolData Other(const std::string& name, ToolKind kind, const std::string& caption = {});
  static BandData DropDownBand(const std::string& name, std::vector<ToolData> tools);

  /// Bands of every kind, the drop-down of the search box at place 1.
  static std::vector<BandData> Table();

  BarControl& Bars();
  Tool& ToolOf(const std::string& band, const std::string& name);

  void Lay(const std::vector<BandData>& bands);
  /// Shows the frame with the table's bars and its four hosted controls.
  void Show(int width = 1366, int height = 700);
  void Resize(int width);

  Gtk::Widget& Address();

  template <typename Widget>
  static void Collect(Gtk::Widget& widget, std::vector<Widget*>& found) {
    if (auto* match = dynamic_cast<Widget*>(&widget)) {
      found.push_back(match);
    }
    for (Gtk::Widget* child = widget.get_first_child(); child != nullptr; child = child->get_next_sibling()) {
      Collect(*child, found);
    }
  }
  template <typename Widget>
  std::vector<Widget*> AllOf() {
    std::vector<Widget*> found;
    Collect(*dynamic_cast<Gtk::Widget*>(Address().get_root()), found);
    return found;
  }
  /// The one inside a widget with a class; an empty class takes the first of all.
  template <typename Widget>
  Widget* One(const std::string& parentClass) {
    for (Widget* each : AllOf<Widget>()) {
      if (parentClass.empty() || each->get_parent()->has_css_class(parentClass)) {
        return each;
      }
    }
    ADD_FAILURE() << "nothing in " << parentClass;
    return nullptr;
  }
  static bool IsNamed(Gtk::Widget& widget, const std::string& name);
  /// The button that assistive tools know by a name; `skip` passes by the first ones of that name.
  Gtk::Button* Button(const std::string& name, int skip = 0);
  void Click(const std::string& name, int skip = 0);
  Gtk::Widget* SideScroller();
  /// A tool's widget; null while it isn't drawn.
  Gtk::Widget* WidgetOf(const std::string& band, std::size_t place);
  bool IsOpen(const std::string& band);
  /// Opens a drop-down, and those that it stands in, without a click.
  void Open(const std::string& name);
  /// The tool that has the keyboard, or an empty string.
  std::string Focused();
  /// Presses a key where the keyboard is: its controllers hear it in the order of the toolkit.
  bool Press(unsigned keyval);
  static bool PressOn(GtkWidget* widget, unsigned keyval, GtkPropagationPhase phase);
  static int LeftIn(Gtk::Widget& widget, Gtk::Widget& around);
  std::vector<int> FixedWidths();

  std::shared_ptr<Form> frame;
  Gtk::Window* window = nullptr;
  std::vector<BandData> table;
  bool laid = false;
  Journal clicks;
  Journal entered;
};

}  // namespace kivandra::gtk
