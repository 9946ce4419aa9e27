// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/automation_server.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "linux/private_bus.h"
#include "platform/linux/automation_names.h"
#include "platform/platform_error.h"

namespace kivandra::linux_impl {
namespace {

using tests::BusClient;
using tests::PrivateBus;
using tests::Until;

/// Notes what it is asked for.
class NotingObject : public ScriptObject {
 public:
  [[nodiscard]] std::vector<Member> Members() const override { return {}; }
  ScriptValue Invoke(std::string_view member, const std::vector<ScriptValue>& arguments) override {
    std::string line(member);
    for (const ScriptValue& each : arguments) {
      line += std::holds_alternative<bool>(each) ? (std::get<bool>(each) ? " true" : " false")
                                                 : " " + std::get<std::string>(each);
    }
    calls.push_back(line);
    if (then) {
      then();
    }
    return line == "Visible" ? ScriptValue(visible) : ScriptValue();
  }
  std::vector<std::string> calls;
  bool visible = true;
  std::function<void()> then;
};

class AutomationServerTest : public testing::Test {
 protected:
  std::unique_ptr<AutomationServer> NewServer() {
    return std::make_unique<AutomationServer>(
        AutomationServer::Program{[this] { return ready ? &object : nullptr; }, [this] { ++presented; }});
  }
  void Start() {
    server = NewServer();
    ASSERT_TRUE(Until([&] { return server->Offered(); }));
  }
  std::string Call(const std::string& method, const char* arguments = "()") {
    return client.Call(kAutomationBusName, kAutomationPath, kAutomationInterface, method, arguments);
  }
  std::string Property(const std::string& method, const char* arguments) {
    return client.Call(kAutomationBusName, kAutomationPath, "org.freedesktop.DBus.Properties", method,
                       arguments);
  }

  PrivateBus bus;
  BusClient client{bus};
  NotingObject object;
  bool ready = true;
  int presented = 0;
  std::unique_ptr<AutomationServer> server;
};

using Lines = std::vector<std::string>;
constexpr const char* kInvalidArguments = "error org.freedesktop.DBus.Error.InvalidArgs";

TEST_F(AutomationServerTest, TellsWhoAsksWhatItOffers) {
  Start();
  const std::string description =
      client.Call(kAutomationBusName, kAutomationPath, "org.freedesktop.DBus.Introspectable", "Introspect");
  for (const std::string part : {"<interface name=\"org.kivandra.Application\">",
                                 "<property type=\"b\" name=\"Visible\" access=\"readwrite\">",
                                 "<method name=\"Navigate\">", "<method name=\"NewWindow\">"}) {
    EXPECT_NE(description.find(part), std::string::npos) << part << " in " << description;
  }
}

TEST_F(AutomationServerTest, PassesCallsOn) {
  Start();
  EXPECT_EQ(Call("Navigate", "('http://example.org/ä',)"), "()");
  EXPECT_EQ(Call("NewWindow"), "()");
  EXPECT_EQ(object.calls, (Lines{"Navigate http://example.org/ä", "NewWindow"}));
}

TEST_F(AutomationServerTest, ReadsAndAssignsWhetherTheFrameShows) {
  Start();
  EXPECT_EQ(Property("Get", "('org.kivandra.Application', 'Visible')"), "(<true>,)");
  object.visible = false;
  EXPECT_EQ(Property("GetAll", "('org.kivandra.Application',)"), "({'Visible': <false>},)");
  EXPECT_EQ(Property("GetAll", "('org.kivandra.Frame',)"), "({},)");
  EXPECT_EQ(Property("Set", "('org.kivandra.Application', 'Visible', <true>)"), "()");
  EXPECT_EQ(object.calls, (Lines{"Visible", "Visible", "Visible true"}));
}

TEST_F(AutomationServerTest, BringsTheFrameToTheFront) {
  Start();
  EXPECT_EQ(client.Call(kAutomationBusName, kAutomationPath, kFrameInterface, "Present"), "()");
  EXPECT_EQ(presented, 1);
  EXPECT_TRUE(object.calls.empty());
}

TEST_F(AutomationServerTest, AWrongCallIsAnsweredWithAnErrorAndReachesNobody) {
  Start();
  EXPECT_EQ(Call("Navigate"), kInvalidArguments);
  EXPECT_EQ(Call("Navigate", "(7,)"), kInvalidArguments);
  EXPECT_EQ(Call("Navigate", "('a', 'b')"), kInvalidArguments);
  EXPECT_EQ(Call("NewWindow", "('a',)"), kInvalidArguments);
  EXPECT_EQ(Call("Quit"), "error org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(Call("Visible"), "error org.freedesktop.DBus.Error.UnknownMethod");
  EXPECT_EQ(Property("Set", "('org.kivandra.Application', 'Visible', <'yes'>)"), kInvalidArguments);
  EXPECT_EQ(Property("Set", "('org.kivandra.Application', 'Visible', <1>)"), kInvalidArguments);
  EXPECT_EQ(Property("Get", "('org.kivandra.Application', 'Password')"), kInvalidArguments);
  EXPECT_EQ(Property("Get", "('org.kivandra.Other', 'Visible')").substr(0, 6), "error ");
  EXPECT_EQ(object.calls, Lines{});
}

TEST_F(AutomationServerTest, ATextOfAMegabyteIsRefused) {
  Start();
  EXPECT_EQ(Call("Navigate", ("('http://" + std::string(1'000'000, 'a') + "',)").c_str()),
            "error org.kivandra.Error.Number5");
  EXPECT_EQ(client.words, "The text is too long.");
  EXPECT_EQ(object.calls, Lines{});
}

TEST_F(AutomationServerTest, AnErrorOfTheProgramIsTheAnswerWithItsNumberAndWords) {
  Start();
  object.then = [] { throw PlatformError(kObjectNotSet, "No window\xFF is open"); };
  EXPECT_EQ(Call("Navigate", "('a',)"), "error org.kivandra.Error.Number91");
  EXPECT_EQ(client.words, "No window\xEF\xBF\xBD is open");
  object.then = [] { throw std::runtime_error("odd"); };
  EXPECT_EQ(Call("NewWindow"), "error org.freedesktop.DBus.Error.Failed");
  object.then = nullptr;
  EXPECT_EQ(Call("NewWindow"), "()");
}

TEST_F(AutomationServerTest, NobodyFindsItBeforeThereIsAnObject) {
  ready = false;
  server = NewServer();
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(600);
  ASSERT_TRUE(Until([&] { return std::chrono::steady_clock::now() > end; }));
  EXPECT_FALSE(client.Has(kAutomationBusName));
  ready = true;
  ASSERT_TRUE(Until([&] { return server->Offered(); }));
  EXPECT_TRUE(client.Has(kAutomationBusName));
}

TEST_F(AutomationServerTest, AProgramThatClosesRefusesEveryCall) {
  Start();
  ready = false;
  const std::string notReady = std::string("error ") + kAutomationNotReady;
  EXPECT_EQ(Call("Navigate", "('a',)"), notReady);
  EXPECT_EQ(Property("Set", "('org.kivandra.Application', 'Visible', <true>)"), notReady);
  EXPECT_EQ(client.Call(kAutomationBusName, kAutomationPath, kFrameInterface, "Present"), notReady);
  EXPECT_EQ(object.calls, Lines{});
  EXPECT_EQ(presented, 0);
}

TEST_F(AutomationServerTest, ItsEndTakesItOffTheBus) {
  Start();
  server.reset();
  EXPECT_TRUE(Until([&] { return !client.Has(kAutomationBusName); }));
}

TEST_F(AutomationServerTest, ItMayEndInsideACall) {
  Start();
  object.then = [this] { server.reset(); };
  (void)Call("NewWindow");
  EXPECT_EQ(object.calls, Lines{"NewWindow"});
  EXPECT_TRUE(Until([&] { return !client.Has(kAutomationBusName); }));
}

TEST_F(AutomationServerTest, WhereTheNameIsTakenItIsOff) {
  client.Take(kAutomationBusName);
  testing::internal::CaptureStderr();
  server = NewServer();
  int looks = 0;
  ASSERT_TRUE(Until([&] { return ++looks > 200; }));
  EXPECT_FALSE(server->Offered());
  server.reset();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(AutomationServerTest, ALostBusEndsItAndNothingElse) {
  Start();
  testing::internal::CaptureStderr();
  bus.Stop();
  EXPECT_TRUE(Until([&] { return !server->Offered(); }));
  server.reset();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(AutomationWithoutABus, ItIsOffAndSaysNothing) {
  const tests::Environment nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere/bus");
  testing::internal::CaptureStderr();
  NotingObject object;
  const AutomationServer server({[&] { return &object; }, [] {}});
  int looks = 0;
  ASSERT_TRUE(Until([&] { return ++looks > 100; }));
  EXPECT_FALSE(server.Offered());
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST(AutomationWithoutABus, ABusThatNeverAnswersHoldsNobodyUp) {
  const tests::TemporaryFolder folder;
  const int listener = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  folder.Path("bus").copy(name.sun_path, sizeof name.sun_path - 1);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&name), sizeof name), 0);
  ASSERT_EQ(listen(listener, 5), 0);
  const tests::Environment address("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + folder.Path("bus"));
  NotingObject object;
  const auto began = std::chrono::steady_clock::now();
  {
    const AutomationServer server({[&] { return &object; }, [] {}});
    int looks = 0;
    ASSERT_TRUE(Until([&] { return ++looks > 20; }));
    EXPECT_FALSE(server.Offered());
  }
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(5));
  close(listener);
  int turns = 0;
  EXPECT_TRUE(Until([&] { return ++turns > 20; })) << "what was under way ends without a trace";
}

}  // namespace
}  // namespace kivandra::linux_impl
