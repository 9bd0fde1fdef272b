// A settings form without a display, and a delegate that writes down what its user does.
#pragma once

#include "backends/qt/settings/QtSettingsForm.h"
#include "backends/qt/text/QtTextServices.h"
#include "backends/qt/windows/PlainDisplayServer.h"
#include "scene/View.h"
#include "tests/doubles/ManualRunLoop.h"

#include <QLocale>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace orbel::qt {

class RecordingFormDelegate : public SettingsFormDelegate {
public:
  void gesturePopUpClicked(std::int64_t tag) override { add("gesture", tag); }
  void magnifyCheckboxClicked(bool on) override { add("magnify", on); }
  void menuSizeClicked(std::int64_t tag) override { add("menuSize", tag); }
  void showRunningAppsClicked(bool on) override { add("showRunningApps", on); }
  void startOnLoginCheckboxClicked(bool on) override { add("startOnLogin", on); }
  void swiftModeCheckboxClicked(bool on) override { add("swiftMode", on); }
  void swiftModeInfoClicked() override { done.emplace_back("swiftModeInfo"); }
  void helpClicked() override { done.emplace_back("help"); }
  void websiteClicked() override { done.emplace_back("website"); }
  void quitClicked() override { done.emplace_back("quit"); }

  std::vector<std::string> done;

private:
  void add(const std::string& name, std::int64_t value) {
    done.push_back(name + " " + std::to_string(value));
  }
};

class FormFixture : public testing::Test {
protected:
  explicit FormFixture(const QLocale& locale = QLocale::c()) : text(locale) {}

  // A view that writes down its presses under that name.
  HostedView hosted(const std::string& name, const Rect& frame) {
    return {.view = std::make_shared<View>(frame), .accessibleName = name, .press = [this, name] {
              delegate.done.push_back(name);
            }};
  }
  SettingsFormContents contents() {
    return {.gestures = {{1, "One"}, {4, "Four"}, {2, "Two"}},
            .menuSizes = {{1, "Small"}, {2, "Medium"}, {3, "Large"}},
            .windowTintButton = hosted("tint", {0, 0, 28, 28}),
            .shortcutView = hosted("shortcut", {0, 0, 190, 24}),
            .closeButton = hosted("close", {0, 0, 20, 20}),
            .version = "1.2.3",
            .website = "example.org"};
  }
  QtSettingsForm& form() {
    if (!m_form) {
      m_form = std::make_unique<QtSettingsForm>(SettingsFormEnvironment{display, text, runLoop, {}},
                                                contents(), delegate);
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

  RecordingFormDelegate delegate;
  QtTextServices text;
  PlainDisplayServer display;
  ManualRunLoop runLoop;

private:
  template <class Widget>
  static QString textOf(const Widget& widget) {
    if constexpr (requires { widget.text(); }) return widget.text();
    return {};
  }

  std::unique_ptr<QtSettingsForm> m_form;
};

} // namespace orbel::qt
