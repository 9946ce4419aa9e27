// SPDX-License-Identifier: GPL-3.0-or-later
// The program's object in the scripts of pages.
#include <gmock/gmock.h>

#include <sstream>

#include "engine/engine_test.h"
#include "platform/platform_error.h"

namespace kivandra::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Test;

/// An object of the program that notes its calls.
class Recorder : public ScriptObject {
 public:
  std::vector<std::string> calls;

  [[nodiscard]] std::vector<Member> Members() const override {
    return {{"Visible", true}, {"Navigate", false}, {"Fail", false}};
  }
  ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) override {
    std::ostringstream call;
    call << member << std::boolalpha;
    for (const ScriptValue& argument : arguments) {
      if (const auto* text = std::get_if<std::string>(&argument)) call << " '" << *text << "'";
      if (const auto* number = std::get_if<double>(&argument)) call << ' ' << *number;
      if (const auto* truth = std::get_if<bool>(&argument)) call << ' ' << *truth;
      if (std::holds_alternative<std::monostate>(argument)) call << " nothing";
    }
    calls.push_back(call.str());
    if (member == "Fail") throw PlatformError(kInvalidCall, "no good");
    return arguments.empty() ? ScriptValue(true) : arguments.front();
  }
};

class ScriptObjects : public Test {
 protected:
  LoopbackServer server;
  Recorder recorder;
  TestWindow window;
};

TEST_F(ScriptObjects, ReachThePageThatIsThereAndEveryLaterOne) {
  server.Serve("/a", {"a"});
  server.Serve("/b", {"<script>window.seen = typeof KVD</script>b"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof KVD"), "undefined");
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(WaitUntil([&] { return window.Script("return typeof KVD") == "object"; }));
  EXPECT_EQ(window.Script("return await KVD.Navigate('x')"), "x");
  ASSERT_TRUE(window.Load(server.Url("/b")));
  EXPECT_EQ(window.Script("return seen"), "object");
  EXPECT_EQ(window.Script("return await KVD.Visible"), "true");
  window.Browser().SetScriptObject("KVD", nullptr);
  EXPECT_THAT(window.Script("return await KVD.Navigate('x')"), HasSubstr("error"));
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof KVD"), "undefined");
}

TEST_F(ScriptObjects, PassValuesAndRefuseOthers) {
  server.Serve("/a", {"a"});
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return await KVD.Navigate('ñ\\u0041', 1.5, true, null)"), "ñA");
  EXPECT_EQ(recorder.calls.back(), "Navigate 'ñA' 1.5 true nothing");
  EXPECT_THAT(window.Script("return await KVD.Fail()"), HasSubstr("no good"));
  EXPECT_THAT(window.Script("return await KVD.Navigate({})"), HasSubstr("error"));
  EXPECT_EQ(window.Script("KVD.Visible = false; return await KVD.Visible"), "true");
  EXPECT_THAT(recorder.calls, ::testing::Contains("Visible false"));
  EXPECT_THAT(window.Script("return await KVD.Unknown()"), HasSubstr("error"));
}

TEST_F(ScriptObjects, CannotBeReplacedByAPage) {
  server.Serve("/a", {"a"});
  window.Browser().SetScriptObject("KVD", &recorder);
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(
      window.Script(
          "try { KVD = 1 } catch {} try { delete window.KVD } catch {} try { KVD.Navigate = 1 } catch {}"
          "return typeof KVD + typeof KVD.Navigate"),
      "objectfunction");
}

TEST_F(ScriptObjects, AreOutOfReachForFrames) {
  server.Serve("/a", {"<iframe src='" + server.Url("/f", "localhost") + "'></iframe>a"});
  server.Serve("/f", {"<script>let word = typeof KVD;"
                      "try { webkit.messageHandlers.program.postMessage(['x', 'Navigate', 'evil']).then("
                      "() => top.postMessage('through', '*'), () => top.postMessage(word, '*')); }"
                      "catch (e) { top.postMessage(word, '*'); }</script>"});
  window.Browser().SetScriptObject("KVD", &recorder);
  window.judge = [](const auto& navigation) { navigation->Allow(); };
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return new Promise((done) => { addEventListener('message', (e) => done(e.data));"
                          "document.querySelector('iframe').src += '?again'; })"),
            "undefined");
  EXPECT_TRUE(recorder.calls.empty());
}

TEST_F(ScriptObjects, ThePagesOwnWorldCannotSeeTheProgramsMessages) {
  server.Serve("/a", {"a"});
  ASSERT_TRUE(window.Load(server.Url("/a")));
  EXPECT_EQ(window.Script("return typeof window.webkit.messageHandlers.frame + typeof kivandraClearUnload"),
            "undefinedundefined");
}

}  // namespace
}  // namespace kivandra::testing
