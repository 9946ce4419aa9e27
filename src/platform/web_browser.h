// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>
#include <string>

#include "platform/navigation.h"
#include "platform/page_view.h"
#include "platform/script_object.h"

namespace kivandra {

/// A document of a page, as long as the page stands.
class HtmlDocument {
 public:
  virtual ~HtmlDocument() = default;

  /// Finds a text from the beginning of the page's selection on (of the page if nothing is selected), without
  /// regard to case, inside words too and across inline tags, and puts each hit, with its own letters, on a
  /// yellow ground: `bound` hits at the most, the last of which becomes the selection. Returns at once; the
  /// page changes a moment later. Does nothing if the page has gone. An empty text is found nowhere.
  virtual void PaintText(const std::string& text, int bound) = 0;
};

/// The frame of a page that an event speaks of: the page itself or a frame inside it.
class PageFrame {
 public:
  virtual ~PageFrame() = default;

  /// True for the browser's own top-level document.
  [[nodiscard]] virtual bool IsTopLevel() const = 0;
  /// Takes away the unload handler of the frame's body.
  virtual void ClearUnloadHandler() = 0;
  /// The frame's document, or null if it is not an HTML document (a picture, a text, nothing).
  [[nodiscard]] virtual std::shared_ptr<HtmlDocument> Document() = 0;
};

class WebBrowser;

/// What a browser control tells the window that owns it. The events come from the event loop, except
/// BeforeNavigate2 for a load that the program itself begins, which is raised inside Navigate, GoBack,
/// GoForward and Refresh. A handler may close the window. No exception may leave a handler.
class WebBrowserEvents {
 public:
  virtual ~WebBrowserEvents() = default;

  /// The page or a frame of it is about to go to navigation->Url(). Nothing is loaded until the navigation is
  /// answered, now or later. A frame's document without an address of its own raises no event.
  virtual void BeforeNavigate2(std::shared_ptr<Navigation> navigation) = 0;
  virtual void NavigateComplete2(PageFrame& pDisp, const std::string& URL) = 0;
  virtual void DocumentComplete(PageFrame& pDisp, const std::string& URL) = 0;
  virtual void DownloadBegin() = 0;
  virtual void DownloadComplete() = 0;
  virtual void TitleChange(const std::string& Text) = 0;
  virtual void StatusTextChange(const std::string& Text) = 0;
  /// Command 1 is "can go forward", 2 is "can go back", others may come.
  virtual void CommandStateChange(long Command, bool Enable) = 0;
  /// A page asks for a new window. The handler sets Cancel, or gives in ppDisp the control of a new window in
  /// which the engine opens the page; neither means that no window opens.
  virtual void NewWindow2(WebBrowser*& ppDisp, bool& Cancel) = 0;
  virtual void OnQuit() = 0;
  virtual void OnVisible(bool Visible) = 0;
  /// A script moves or sizes its window; all in pixels of the page.
  virtual void WindowSetLeft(long Left) = 0;
  virtual void WindowSetTop(long Top) = 0;
  virtual void WindowSetWidth(long Width) = 0;
  virtual void WindowSetHeight(long Height) = 0;
};

// Commands and options of ExecWB; the numbers are those of docobj.h.
enum OleCommand : int {
  OLECMDID_OPEN = 1,
  OLECMDID_SAVEAS = 4,
  OLECMDID_PRINT = 6,
  OLECMDID_PRINTPREVIEW = 7,
  OLECMDID_PAGESETUP = 8,
  OLECMDID_PROPERTIES = 10,
  OLECMDID_CUT = 11,
  OLECMDID_COPY = 12,
  OLECMDID_PASTE = 13,
  OLECMDID_SELECTALL = 17,
  OLECMDID_ZOOM = 19,
  OLECMDID_UPDATECOMMANDS = 21,
};

/// The browser engine in a window. An operation throws PlatformError if the window or the engine is gone.
class WebBrowser : public virtual PageView {
 public:
  static constexpr ControlKind kKind = ControlKind::WebBrowser;

  /// The one receiver of the events, or null. It must outlive the control or be taken back with null.
  virtual void SetEvents(WebBrowserEvents* events) = 0;

  // Navigate of PageView: raises BeforeNavigate2 inside the call; the load begins when that navigation is
  // allowed.
  virtual void
  GoBack() = 0;  ///< raises BeforeNavigate2 inside; throws PlatformError if there is no page behind
  virtual void
  GoForward() = 0;  ///< raises BeforeNavigate2 inside; throws PlatformError if there is no page before
  virtual void Refresh() = 0;  ///< raises BeforeNavigate2 inside
  // Stop of PageView: ends the load; every held navigation of this control is dropped and refused.

  /// Address of the page that is shown; empty before the first page.
  [[nodiscard]] virtual std::string LocationURL() const = 0;
  /// Title of the page that is shown, or its address if it has none.
  [[nodiscard]] virtual std::string LocationName() const = 0;
  /// Whether a page is being loaded or judged.
  [[nodiscard]] virtual bool Busy() const = 0;
  /// The page that is shown, as the events speak of it; null if there is none to speak of.
  [[nodiscard]] virtual PageFrame* Page() { return nullptr; }

  /// Carries out a command by its OleCommand number; `option` 0 default, 1 ask the user, 2 don't ask. `value`
  /// is the size of the letters for OLECMDID_ZOOM, 0 (smallest) to 4 (largest), 2 being the page's own; the
  /// other commands do not look at it. OLECMDID_COPY and OLECMDID_CUT return when the selection is on the
  /// clipboard; with nothing selected, or if the page does not answer for a second, the clipboard keeps what
  /// it holds. These two and the dialogs may run events inside. Commands that the engine does not know throw
  /// PlatformError.
  virtual void ExecWB(int command, int option, int value = 0) = 0;
  /// Whether a command can be carried out: OLECMDF bits of docobj.h (1 supported, 2 enabled). Throws
  /// PlatformError for a command that the engine does not know.
  [[nodiscard]] virtual int QueryStatusWB(int command) const = 0;
  virtual void SetRegisterAsBrowser(bool value) = 0;
  /// Offers `object` to the scripts of the current and every later page under `name`; null takes it away.
  virtual void SetScriptObject(const std::string& name, ScriptObject* object) = 0;
};

}  // namespace kivandra
