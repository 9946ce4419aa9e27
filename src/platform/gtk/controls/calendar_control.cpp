// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/calendar_control.h"

#include <algorithm>
#include <optional>

#include "platform/gtk/guard.h"

namespace kivandra::gtk {
namespace {

constexpr int kDaysInWeek = 7;
constexpr int kMonthsInYear = 12;
constexpr int kFirstYear = 1;
constexpr int kLastYear = 9999;

/// Names the four buttons of the heading, which show arrows alone. The month's name stands in a stack between
/// its two buttons, the year in a label; which pair comes first depends on the language.
void NameButtons(GtkWidget* heading) {
  GtkWidget* before = nullptr;
  for (GtkWidget* each = gtk_widget_get_first_child(heading); each != nullptr;
       each = gtk_widget_get_next_sibling(each)) {
    if (!GTK_IS_BUTTON(each)) {
      before = each;
      continue;
    }
    GtkWidget* next = gtk_widget_get_next_sibling(each);
    const bool leadsIn = next != nullptr && !GTK_IS_BUTTON(next);
    const bool month = GTK_IS_STACK(leadsIn ? next : before);
    const char* name =
        leadsIn ? (month ? "Previous month" : "Previous year") : (month ? "Next month" : "Next year");
    gtk_accessible_update_property(GTK_ACCESSIBLE(each), GTK_ACCESSIBLE_PROPERTY_LABEL, name, -1);
    gtk_widget_set_tooltip_text(each, name);
  }
}

/// Where the key leads from `day`, or nothing if it is no walking key.
std::optional<Glib::DateTime> Walk(const Glib::DateTime& day, unsigned keyval, bool control) {
  switch (keyval) {
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      return day.add_days(-1);
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      return day.add_days(1);
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
      return day.add_days(-kDaysInWeek);
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
      return day.add_days(kDaysInWeek);
    case GDK_KEY_Page_Up:
    case GDK_KEY_KP_Page_Up:
      return day.add_months(control ? -kMonthsInYear : -1);
    case GDK_KEY_Page_Down:
    case GDK_KEY_KP_Page_Down:
      return day.add_months(control ? kMonthsInYear : 1);
    case GDK_KEY_Home:
    case GDK_KEY_KP_Home:
      return day.add_days(1 - day.get_day_of_month());
    case GDK_KEY_End:
    case GDK_KEY_KP_End:
      return day.add_days(1 - day.get_day_of_month()).add_months(1).add_days(-1);
    default:
      return std::nullopt;
  }
}

/// Tells assistive tools which day is chosen.
void SayDay(Gtk::Calendar& calendar) {
  const Glib::ustring day = calendar.get_date().format("%A, %e %B %Y");
  gtk_accessible_update_property(GTK_ACCESSIBLE(calendar.Gtk::Widget::gobj()),
                                 GTK_ACCESSIBLE_PROPERTY_DESCRIPTION, day.c_str(), -1);
}

bool Chooses(unsigned keyval) {
  return keyval == GDK_KEY_Return || keyval == GDK_KEY_KP_Enter || keyval == GDK_KEY_ISO_Enter ||
         keyval == GDK_KEY_space || keyval == GDK_KEY_KP_Space;
}

}  // namespace

CalendarControl::CalendarControl(Gtk::Calendar& calendar) : WidgetControl(calendar) {
  NameButtons(gtk_widget_get_first_child(calendar.Gtk::Widget::gobj()));
  for (const char* part : {"day", "month", "year"}) {
    calendar.connect_property_changed(part, [&calendar] { SayDay(calendar); });
  }
  SayDay(calendar);
  WatchMouse(calendar);
  WatchKeys(calendar);
}

void CalendarControl::WatchMouse(Gtk::Calendar& calendar) {
  // The toolkit chooses the day when the button goes down; the click is over, and told, when it comes up.
  auto clicks = Gtk::GestureClick::create();
  clicks->set_button(GDK_BUTTON_PRIMARY);
  clicks->signal_pressed().connect([this](int, double x, double y) {
    Guarded([&] {
      const Gtk::Widget* hit = Days().pick(x, y);
      pressedOnDay_ = hit != nullptr && hit->has_css_class("day-number");
    });
  });
  clicks->signal_released().connect([this](int, double, double) {
    if (std::exchange(pressedOnDay_, false)) {
      Raise(click_);
    }
  });
  clicks->signal_cancel().connect([this](Gdk::EventSequence*) { pressedOnDay_ = false; });
  calendar.add_controller(clicks);
}

void CalendarControl::WatchKeys(Gtk::Calendar& calendar) {
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::TARGET);
  keys->signal_key_pressed().connect(
      [this](unsigned keyval, unsigned, Gdk::ModifierType state) {
        const auto others = Gdk::ModifierType::ALT_MASK | Gdk::ModifierType::SUPER_MASK;
        const bool control = (state & Gdk::ModifierType::CONTROL_MASK) != Gdk::ModifierType{};
        return (state & others) == Gdk::ModifierType{} &&
               Guarded([&] { return KeyPressed(keyval, control); });
      },
      false);
  calendar.add_controller(keys);
}

bool CalendarControl::KeyPressed(unsigned keyval, bool control) {
  if (Chooses(keyval)) {
    Raise(click_);
    return true;
  }
  const auto reached = Walk(Days().get_date(), keyval, control);
  if (!reached) {
    return false;
  }
  if (*reached && reached->get_year() >= kFirstYear && reached->get_year() <= kLastYear) {
    Days().select_day(*reached);
  }
  return true;
}

Gtk::Calendar& CalendarControl::Days() const { return dynamic_cast<Gtk::Calendar&>(Widget()); }

int CalendarControl::Day() const { return Days().get_date().get_day_of_month(); }

int CalendarControl::Month() const { return Days().get_date().get_month(); }

int CalendarControl::Year() const { return Days().get_date().get_year(); }

void CalendarControl::Today() { Days().select_day(Glib::DateTime::create_now_local()); }

void CalendarControl::OnClick(std::function<void()> handler) { Alive(), click_ = std::move(handler); }

void CalendarControl::LetGo() {
  click_ = nullptr;
  WidgetControl::LetGo();
}

}  // namespace kivandra::gtk
