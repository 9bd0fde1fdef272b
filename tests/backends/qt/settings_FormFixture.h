// A settings form without a display, which shows a window of every kind of control and writes down what its
// user does.
#pragma once

#include "backends/qt/settings/QtSettingsForm.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "scene/Event.h"
#include "scene/View.h"
#include "tests/doubles/ManualRunLoop.h"

#include <QTest>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace orbel::qt {

class FormFixture : public testing::Test {
protected:
  // A view that writes down its presses under that name.
  HostedView hosted(const std::string& name, const Rect& frame) {
    return {.view = std::make_shared<View>(frame), .accessibleName = name, .press = recorder(name)};
  }
  SettingsFormDescription description() {
    return {
        .windowTitle = "Settings",
        .heading = "Orbel Menu",
        .groups = {{"Open the menu",
                    {{"&Shortcut:", {"shortcut", hosted("shortcut", {0, 0, 190, 24})}},
                     {"&Gesture:", popUpButton("gesture", "Gesture", {{1, "One"}, {4, "Four"}, {2, "Two"}}),
                      disc("help", "?", "Show how to make the gesture")}}},
                   {"Appearance",
                    {{"Menu si&ze:",
                      popUpButton("menuSize", "Menu size", {{1, "Small"}, {2, "Medium"}, {3, "Large"}})},
                     {"Menu &color:", {"tint", hosted("tint", {0, 0, 28, 28})}},
                     {"", checkBox("magnify", "&Magnify items under the pointer")}}},
                   {"Behavior",
                    {{"", checkBox("showRunningApps", "Show &running applications")},
                     {"", checkBox("swiftMode", "S&wift Mode"),
                      disc("swiftModeInfo", "i", "What is Swift Mode?")},
                     {"", checkBox("startOnLogin", "&Launch at login")}}}},
        .footerAtLeft = {{"version", SettingsText{"Version 1.2.3"}},
                         {"website", SettingsButton{.style = SettingsButton::Style::link,
                                                    .title = "example.org",
                                                    .explanation = "Web site: example.org",
                                                    .pressed = recorder("website")}}},
        .footerAtRight = {{"quit", SettingsButton{.title = "&Quit Orbel Menu", .pressed = recorder("quit")}}},
        .closeButton = {"close", hosted("close", {0, 0, 20, 20})},
        .keys = {{kEscapeKeyEquivalent, 0, recorder("Escape")},
                 {"w", kControlFlag, recorder("Control-W")},
                 {"w", kCommandFlag, recorder("Super-W")},
                 {"k", kOptionFlag | kShiftFlag, recorder("Alt-Shift-K")}}};
  }
  QtSettingsForm& form() {
    if (!m_form) {
      m_form = std::make_unique<QtSettingsForm>(SettingsFormEnvironment{display, runLoop, {}}, description());
    }
    return *m_form;
  }
  // Shown and with the keyboard.
  QWidget& shown() {
    form().window().makeKeyAndOrderFront();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form().widget()));
    return form().widget();
  }
  template <class Widget>
  Widget& find(const QString& name) {
    for (auto* candidate : form().widget().findChildren<Widget*>()) {
      if (candidate->accessibleName() == name || textOf(*candidate).remove(QLatin1Char('&')) == name)
        return *candidate;
    }
    throw std::runtime_error("there is no control " + name.toStdString());
  }

  std::vector<std::string> done; // by the user: the name of what was used, with its new value
  PlainDisplayServer display;
  ManualRunLoop runLoop;

private:
  std::function<void()> recorder(const std::string& name) {
    return [this, name] { done.push_back(name); };
  }
  std::function<void(std::int64_t)> valueRecorder(const std::string& name) {
    return [this, name](std::int64_t value) { done.push_back(name + " " + std::to_string(value)); };
  }
  SettingsControl checkBox(const std::string& name, const std::string& title) {
    return {name, SettingsCheckBox{title, valueRecorder(name)}};
  }
  SettingsControl popUpButton(const std::string& name, const std::string& accessibleName,
                              std::vector<SettingsChoice> choices) {
    return {name, SettingsPopUpButton{accessibleName, std::move(choices), valueRecorder(name)}};
  }
  SettingsControl disc(const std::string& name, const std::string& title, const std::string& explanation) {
    return {name, SettingsButton{.style = SettingsButton::Style::disc,
                                 .title = title,
                                 .explanation = explanation,
                                 .pressed = recorder(name)}};
  }

  template <class Widget>
  static QString textOf(const Widget& widget) {
    if constexpr (requires { widget.text(); }) return widget.text();
    return {};
  }

  std::unique_ptr<QtSettingsForm> m_form;
};

} // namespace orbel::qt
