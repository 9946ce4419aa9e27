// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/controls/skin_sheet.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <string_view>

#include "platform/gtk/controls/skin_check.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {
namespace {

constexpr std::size_t kLargestSheet = std::size_t{4} << 20U;
// A child window lies in a skinned window and yet looks its own way, so the fixed sheet has the last word.
constexpr unsigned kDefaultPriority = GTK_STYLE_PROVIDER_PRIORITY_APPLICATION;
constexpr unsigned kSkinPriority = kDefaultPriority + 1;
constexpr unsigned kFixedPriority = kSkinPriority + 1;
constexpr long kNoFile = 53;

class OpenFile {
 public:
  explicit OpenFile(const std::string& path)
      : number_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY)) {}
  ~OpenFile() {
    if (number_ >= 0) {
      close(number_);
    }
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  /// -1 if it can't be opened.
  [[nodiscard]] int Number() const { return number_; }

 private:
  int number_;
};

std::string Replaced(std::string_view text, std::string_view what, std::string_view with) {
  std::string replaced;
  replaced.reserve(text.size() + text.size() / 8);
  std::size_t from = 0;
  for (std::size_t at = text.find(what); at != std::string_view::npos; at = text.find(what, from)) {
    replaced.append(text, from, at - from).append(with);
    from = at + what.size();
  }
  return replaced.append(text, from);
}

/// Gives class and colours of a sheet the number of their dress. A `data:` address can't hold either word by
/// chance: its base64 has neither "-" nor "_".
std::string Numbered(std::string css, const std::string& number) {
  css = Replaced(css, "kv-skin", "kv-skin-" + number);
  css = Replaced(css, "@kv_", "@kv" + number + "_");
  return Replaced(css, "@define-color kv_", "@define-color kv" + number + "_");
}

/// A provider for the text; throws PlatformError at its first error.
Glib::RefPtr<Gtk::CssProvider> Parsed(const std::string& css) {
  auto provider = Gtk::CssProvider::create();
  std::string error;
  auto connection = provider->signal_parsing_error().connect(
      [&error](const Glib::RefPtr<const Gtk::CssSection>&, const Glib::Error& what) {
        if (error.empty()) {
          error = what.what();
        }
      });
  provider->load_from_data(css);
  connection.disconnect();
  if (!error.empty()) {
    throw PlatformError(kInvalidCall, "broken style sheet: " + error);
  }
  return provider;
}

std::map<std::string, std::weak_ptr<SkinSheet>>& Worn() {
  static std::map<std::string, std::weak_ptr<SkinSheet>> worn;  // by the skin file's content
  return worn;
}

}  // namespace

std::string ReadSheet(const std::string& path) {
  // Nothing but a plain file: the opening of a pipe waits for a writer, and a device may never end.
  const OpenFile file(path);
  struct stat about {};
  if (file.Number() < 0 || fstat(file.Number(), &about) != 0 || !S_ISREG(about.st_mode)) {
    throw PlatformError(kNoFile, "can't read " + path);
  }
  if (about.st_size > static_cast<off_t>(kLargestSheet)) {
    throw PlatformError(kInvalidCall, "too large for a style sheet: " + path);
  }
  std::string text(static_cast<std::size_t>(about.st_size), '\0');
  std::size_t filled = 0;
  ssize_t got = 0;
  while (filled < text.size() &&
         (got = read(file.Number(), text.data() + filled, text.size() - filled)) != 0) {
    if (got < 0 && errno != EINTR) {
      throw PlatformError(kNoFile, "can't read " + path);
    }
    filled += got < 0 ? 0 : static_cast<std::size_t>(got);
  }
  text.resize(filled);
  return text;
}

void LoadProgramSheet(const std::string& path, ProgramSheet kind) {
  Gtk::StyleContext::add_provider_for_display(
      Gdk::Display::get_default(), Parsed(ReadSheet(path)),
      kind == ProgramSheet::Fixed ? kFixedPriority : kDefaultPriority);
}

std::shared_ptr<SkinSheet> SkinSheet::Load(const std::string& skinFile, const std::string& structure) {
  const std::string skin = ReadSheet(skinFile);
  std::erase_if(Worn(), [](const auto& each) { return each.second.expired(); });
  if (const auto found = Worn().find(skin); found != Worn().end()) {
    return found->second.lock();
  }
  CheckSkin(skin);
  std::shared_ptr<SkinSheet> sheet(new SkinSheet(skin, structure));
  Worn()[skin] = sheet;
  return sheet;
}

SkinSheet::SkinSheet(const std::string& skin, const std::string& structure) {
  static int count = 0;
  const std::string number = std::to_string(++count);
  provider_ = Parsed(Numbered(structure + "\n" + skin, number));
  cssClass_ = "kv-skin-" + number;
  Gtk::StyleContext::add_provider_for_display(Gdk::Display::get_default(), provider_, kSkinPriority);
}

SkinSheet::~SkinSheet() {
  if (const auto display = Gdk::Display::get_default()) {
    Gtk::StyleContext::remove_provider_for_display(display, provider_);
  }
}

}  // namespace kivandra::gtk
