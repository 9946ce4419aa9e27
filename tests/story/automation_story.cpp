// SPDX-License-Identifier: GPL-3.0-or-later
// What other programs reach of this one, and when.
#include <gtest/gtest.h>

#include "fakes/whole_program.h"
#include "hosts.h"

namespace kivandra {
namespace {

struct AutomationStory : testing::Test {
  fakes::WholeProgram world;
  [[nodiscard]] ScriptObject* Object() { return world.program.AutomationObject(); }
};

TEST_F(AutomationStory, NobodyOutsideReachesTheProgramInItsUnfilteredSeconds) {
  EXPECT_EQ(Object(), nullptr);
  bool reachedOnItsWay = false;
  world.loop.After(1000, [&] { reachedOnItsWay = Object() != nullptr; });
  world.StartAsUsual();
  EXPECT_FALSE(reachedOnItsWay);
  EXPECT_EQ(Object(), nullptr);
  world.PassStartUp();
  EXPECT_NE(Object(), nullptr);
}

TEST_F(AutomationStory, WhatIsAskedFromOutsideIsJudged) {
  world.StartAsUsual();
  world.PassStartUp();
  world.Browser().ShowPage(std::string(hosts::kProductHome), "Home");
  world.inet1.pages["http://www.page.org"] = "<p>Some PORN here</p>";
  ASSERT_NE(Object(), nullptr);
  Object()->Invoke("Navigate", {std::string("http://www.page.org")});
  world.loop.Advance(100);
  EXPECT_TRUE(world.journal.Has("refuse http://www.page.org"));
  EXPECT_FALSE(world.journal.Has("allow http://www.page.org"));
}

TEST_F(AutomationStory, NobodyReachesAProgramThatIsClosing) {
  world.StartAsUsual();
  world.PassStartUp();
  bool reached = true;
  world.loop.After(1000, [&] { reached = Object() != nullptr; });
  EXPECT_TRUE(world.Frame().Close(UnloadMode::ControlMenu));
  EXPECT_FALSE(reached);
  EXPECT_EQ(Object(), nullptr);
}

TEST_F(AutomationStory, AFrameThatIsClosedDuringAnotherStartStaysClosed) {
  world.StartAsUsual();
  world.PassStartUp();
  world.loop.After(100, [&] { EXPECT_TRUE(world.Frame().Close(UnloadMode::ControlMenu)); });
  Object()->Invoke("Visible", {true});
  EXPECT_TRUE(world.forms.Loaded().empty());
  EXPECT_EQ(Object(), nullptr);
}

}  // namespace
}  // namespace kivandra
