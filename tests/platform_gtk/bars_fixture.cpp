// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "platform_gtk/bars_test.h"

namespace kivandra::gtk {

BarsFixture::BarsFixture() {
  frame = LoadFrame();
  frame->Get<SkinForm>("SkinForm1").SetSkinFile(kAssets + "/winaqua.skn");
}

BarsFixture::~BarsFixture() = default;

ToolData BarsFixture::Plain(const std::string& name, int image, ToolDisplay display) {
  return {.name = name,
          .caption = name,
          .toolTip = {},
          .subBand = {},
          .kind = ToolKind::Button,
          .display = display,
          .image = image};
}

ToolData BarsFixture::Above(const std::string& name, int image, bool enabled) {
  ToolData tool = Plain(name, image, ToolDisplay::ImageAboveText);
  tool.caption = "&" + name;
  tool.enabled = enabled;
  return tool;
}

ToolData BarsFixture::Beside(const std::string& name, int image, const std::string& subBand) {
  ToolData tool = Plain(name, image, ToolDisplay::ImageAndText);
  tool.subBand = subBand;
  return tool;
}

ToolData BarsFixture::Drawn(const std::string& name, const std::string& caption, int image) {
  ToolData tool = Plain(name, image, ToolDisplay::Image);
  tool.caption = caption;
  return tool;
}

ToolData BarsFixture::Other(const std::string& name, ToolKind kind, const std::string& caption) {
  return {.name = name, .caption = caption, .toolTip = {}, .subBand = {}, .kind = kind};
}

BandData BarsFixture::DropDownBand(const std::string& name, std::vector<ToolData> tools) {
  return {
      .name = name, .caption = name, .kind = BandKind::DropDown, .childBand = {}, .tools = std::move(tools)};
}

std::vector<BandData> BarsFixture::Table() {
  ToolData search = Other("SearchCriteria", ToolKind::Edit, "Search");
  search.subBand = "SearchBy";
  search.width = 193 * 15;
  search.toolTip = "Enter a word";
  ToolData slash = Other("slash", ToolKind::Separator);
  slash.image = 144;
  return {
      {.name = "Bonus Bar",
       .caption = "Bonus Bar",
       .kind = BandKind::ToolBar,
       .childBand = {},
       .tools = {search, Other("sep1", ToolKind::Separator), Beside("Tools", 44, "Tools"), Beside("Find", 21),
                 Other("AddressBar", ToolKind::Hosted), Drawn("btnGo", "btnGo", 61),
                 Drawn("Site Of The Month", "Site Of The Month", 50), Beside("Help", 34, "Help_Expanded")},
       .row = 2},
      DropDownBand("SearchBy",
                   {Beside("Search The Web", 25, "SearchTheWeb"), Beside("Dictionary", 32, "Dictionary?"),
                    Other("Tool44", ToolKind::Separator), Beside("Stock  Quotes", 29, "Stock Quotes")}),
      DropDownBand("Stock Quotes", {Beside("Yahoo! Quotes", 30), Beside("MSN Quotes", 31)}),
      DropDownBand("Tools", {Beside("Highlight", 45, "HILITE"), Other("Tool15", ToolKind::Separator),
                             Beside("Notepad", 40), Beside("Text Size", 46, "Text Size")}),
      DropDownBand("HILITE", {Drawn("How to Use?", "Tool121", 138)}),
      DropDownBand("Help_Expanded", {Beside("How to Use", 35), Beside("Advertise", 38)}),
      DropDownBand("Text Size",
                   {Plain("Largest", -1, ToolDisplay::Text), Plain("Smallest", -1, ToolDisplay::Text)}),
      {.name = "MainBar",
       .caption = "MainBar",
       .kind = BandKind::ToolBar,
       .childBand = {},
       .tools = {Above("Back", 51), Above("Forward", 52), Above("Refresh", 53), Above("Stop", 54),
                 Above("Home", 55), Above("Print", 56), Above("Lock", 58, false),
                 Other("Tool68", ToolKind::Separator), Other("Spacer", ToolKind::Hosted),
                 Other("Banner", ToolKind::Hosted), Other("LogoBox", ToolKind::Hosted)},
       .row = 1},
      {.name = "SideBar",
       .caption = "SideBar",
       .kind = BandKind::SideBar,
       .childBand = "Subjects",
       .tools = {}},
      {.name = "Subjects",
       .caption = "Subjects",
       .kind = BandKind::ChildBand,
       .childBand = {},
       .tools = {Drawn("Math", "", 114), Other("Tool105", ToolKind::Spacer, "Tool105"),
                 Drawn("Language", "Language", 115), Other("Tool106", ToolKind::Spacer, "Tool106"),
                 Drawn("Science", "Science", 116), Other("Tool107", ToolKind::Spacer, "Tool107"),
                 Drawn("Social Studies", "Social Studies", 117)}},
      DropDownBand("SearchTheWeb", {Drawn("doweb", "Tool139", 149), Other("Tool138", ToolKind::Separator),
                                    Drawn("SearchTheWeb", "Tool122", 139)}),
      DropDownBand("Dictionary?",
                   {Drawn("dodictionary", "Tool130", 145), slash, Drawn("DictionaryHelp", "Tool127", 143)}),
  };
}

BarControl& BarsFixture::Bars() { return frame->Get<BarControl>("BonusBar"); }

Tool& BarsFixture::ToolOf(const std::string& band, const std::string& name) {
  return Bars().Bands(band).Tools(name);
}

void BarsFixture::Lay(const std::vector<BandData>& bands) {
  table = bands;
  laid = true;
  Bars().Lay(bands);
  Bars().OnToolClick([this](Tool& tool) { clicks.push_back(tool.Name()); });
  Bars().OnToolEntered([this](Tool& tool) { entered.push_back(tool.Name()); });
}

void BarsFixture::Show(int width, int height) {
  if (!laid) {
    Lay(Table());
  }
  ToolOf("MainBar", "Spacer").SetCustom(&frame->Get<PictureBox>("TheSpacer"));
  ToolOf("Bonus Bar", "AddressBar").SetCustom(&frame->Get<ComboBox>("TheAddress"));
  ToolOf("MainBar", "Banner").SetCustom(&frame->Get<PictureBox>("picBannerBorder"));
  ToolOf("MainBar", "LogoBox").SetCustom(&frame->Get<PictureBox>("Logo"));
  frame->SetWidth(width * 15);
  frame->SetHeight(height * 15);
  frame->SetVisible(true);
  window = dynamic_cast<Gtk::Window*>(Address().get_root());
  EXPECT_TRUE(Until([&] { return window->get_mapped() && window->get_width() > 0; }));
  Settle();
}

void BarsFixture::Resize(int width) {
  frame->SetWidth(width * 15);
  // The frame's own edge counts too.
  EXPECT_TRUE(Until([&] { return window->get_allocated_width() == width; })) << window->get_allocated_width();
  Settle();
}

Gtk::Widget& BarsFixture::Address() {
  return dynamic_cast<WidgetControl&>(frame->Get<ComboBox>("TheAddress")).Widget();
}

bool BarsFixture::IsNamed(Gtk::Widget& widget, const std::string& name) {
  char* wrong = gtk_test_accessible_check_property(GTK_ACCESSIBLE(widget.gobj()),
                                                   GTK_ACCESSIBLE_PROPERTY_LABEL, name.c_str());
  const bool right = wrong == nullptr;
  g_free(wrong);
  return right;
}

Gtk::Button* BarsFixture::Button(const std::string& name, int skip) {
  for (Gtk::Button* button : AllOf<Gtk::Button>()) {
    if (IsNamed(*button, name) && skip-- == 0) {
      return button;
    }
  }
  ADD_FAILURE() << "no button " << name;
  return nullptr;
}

void BarsFixture::Click(const std::string& name, int skip) {
  if (Gtk::Button* button = Button(name, skip); button != nullptr && button->is_sensitive()) {
    g_signal_emit_by_name(button->gobj(), "clicked");
  }
  Settle();
}

Gtk::Widget* BarsFixture::SideScroller() { return Button("Math")->get_ancestor(GTK_TYPE_SCROLLED_WINDOW); }

Gtk::Widget* BarsFixture::WidgetOf(const std::string& band, std::size_t place) {
  for (const BandData& each : table) {
    if (each.name == band) {
      return dynamic_cast<ToolView&>(ToolOf(band, each.tools[place].name)).Widget();
    }
  }
  return nullptr;
}

bool BarsFixture::IsOpen(const std::string& band) {
  Gtk::Widget* row = WidgetOf(band, 0);
  return row != nullptr && row->get_mapped();
}

void BarsFixture::Open(const std::string& name) {
  for (const BandData& band : table) {
    for (const ToolData& tool : band.tools) {
      if (tool.subBand == name) {
        if (band.kind == BandKind::DropDown && !IsOpen(band.name)) {
          Open(band.name);
        }
        dynamic_cast<ToolView&>(ToolOf(band.name, tool.name)).Open(false);
      }
    }
  }
  Settle();
  EXPECT_TRUE(IsOpen(name)) << name;
}

std::string BarsFixture::Focused() {
  for (const BandData& band : table) {
    for (std::size_t i = 0; i < band.tools.size(); ++i) {
      if (Gtk::Widget* widget = WidgetOf(band.name, i); widget != nullptr && widget->has_focus()) {
        return band.tools[i].name;
      }
    }
  }
  auto* focus = window->get_focus();
  return focus != nullptr && focus->is_ancestor(*One<Gtk::Entry>("kv-joined")) ? "search box" : std::string();
}

bool BarsFixture::Press(unsigned keyval) {
  std::vector<GtkWidget*> chain;
  for (GtkWidget* each = window->get_focus() != nullptr ? GTK_WIDGET(window->get_focus()->gobj()) : nullptr;
       each != nullptr; each = GTK_IS_NATIVE(each) ? nullptr : gtk_widget_get_parent(each)) {
    chain.insert(chain.begin(), each);
  }
  for (const auto phase : {GTK_PHASE_CAPTURE, GTK_PHASE_BUBBLE}) {
    for (GtkWidget* each : chain) {
      if (PressOn(each, keyval, phase)) {
        Settle();
        return true;
      }
    }
    std::reverse(chain.begin(), chain.end());
  }
  return false;
}

bool BarsFixture::PressOn(GtkWidget* widget, unsigned keyval, GtkPropagationPhase phase) {
  GListModel* controllers = gtk_widget_observe_controllers(widget);
  gboolean used = FALSE;
  for (guint i = 0; used == FALSE && i < g_list_model_get_n_items(controllers); ++i) {
    auto* controller = static_cast<GtkEventController*>(g_list_model_get_item(controllers, i));
    if (GTK_IS_EVENT_CONTROLLER_KEY(controller) &&
        gtk_event_controller_get_propagation_phase(controller) == phase) {
      g_signal_emit_by_name(controller, "key-pressed", keyval, 0U, GdkModifierType(0), &used);
    }
    g_object_unref(controller);
  }
  g_object_unref(controllers);
  return used != FALSE;
}

int BarsFixture::LeftIn(Gtk::Widget& widget, Gtk::Widget& around) {
  double x = 0;
  double y = 0;
  widget.translate_coordinates(around, 0, 0, x, y);
  return static_cast<int>(x);
}

std::vector<int> BarsFixture::FixedWidths() {
  std::vector<int> widths;
  for (const char* name : {"Back", "Forward", "Lock", "Tools", "Find", "Go", "Site Of The Month", "Help"}) {
    widths.push_back(Button(name)->get_allocated_width());
  }
  return widths;
}

}  // namespace kivandra::gtk
