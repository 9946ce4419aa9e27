// SPDX-License-Identifier: GPL-3.0-or-later
// What a parent may want to know of how the browser is set up. Each line is true of the engine's settings, of
// the gate or of the fetch; whoever changes one of them changes its line here.
#include "platform/gtk/shell/internet_options.h"

namespace kivandra::gtk {

const std::vector<const char*>& FixedOptions() {
  static const std::vector<const char*> options{
      "While the filter is on, judge an address before its page is loaded",
      "While the filter is on, read a page's text before it is shown",
      "Judge frames inside a page like pages",
      "Judge every address that a page is passed on to",
      "Judge pages in new windows like all others",
      "Judge an address that is typed, clicked or opened by a script alike",
      "Keep a page away if its text can't be fetched",
      "Keep a page away if its server can't prove who it is",
      "Find forbidden words in capital and small letters alike",
      "Find forbidden words in a page as whole words only",
      "Ask for the parent's password to open a page that was kept away",
      "Forget pages that were opened by password when the program ends",
      "Keep the password and the lists in the parent's hands",
      "Shut every page into a sandbox of its own",
      "Run JavaScript in pages",
      "Do not run plug-ins",
      "Do not run service workers",
      "Do not run workers that windows share",
      "Do not save files that a page sends",
      "Do not save files by a link's wish for it",
      "Do not let a page ask for files of this computer",
      "Do not let a page read files of this computer",
      "Do not let a page read the clipboard by itself",
      "Do not let a page use camera or microphone",
      "Do not let a page ask where the computer is",
      "Do not let a page send notifications",
      "Do not let a page fill the whole screen",
      "Do not let a page hide or hold the mouse pointer",
      "Do not let a page keep the screen awake",
      "Do not let a page print by itself",
      "Do not let a page show message boxes",
      "Do not let a page hold its window open",
      "Do not let a server ask for a name and a password",
      "Do not store names and passwords for servers",
      "Do not make video calls from a page",
      "Do not load pages before they are clicked",
      "Do not look up addresses before they are clicked",
      "Do not keep left pages running for Back",
      "Start films and sounds in a page only when they are clicked",
      "Go back by the button only, not by the Backspace key",
      "Do not turn pages by swiping",
      "Do not move through pages with a text cursor",
      "Do not open the tools for page makers",
      "Offer only editing commands in the menu of a page",
      "Forget cookies without a date when the program ends",
  };
  return options;
}

}  // namespace kivandra::gtk
