// A popover of the settings window: the seam over its window. It may be destroyed from within any of
// its callbacks.
#pragma once

#include "backends/qt/settings/PopoverWidget.h"
#include "platform/Popover.h"

#include <QPointer>

#include <functional>
#include <string>

namespace orbel::qt {

class QtPopover : public Popover {
public:
  // Finds the widget of a control; null where there is none.
  using ControlFinder = std::function<QWidget*(const std::string& identifier)>;

  // The parent, which may be destroyed first, destroys the window with it.
  QtPopover(const DisplayServer& display, RunLoop& runLoop, QWidget* parent, ControlFinder control,
            std::function<void()> didClose);
  ~QtPopover() override;

  void setContent(std::vector<HostedView> views, int columns) override;
  void show(const std::string& besideControl) override;
  void close() override;
  bool isShown() const override { return m_widget && m_widget->isVisible(); }

private:
  QPointer<PopoverWidget> m_widget;
  ControlFinder m_control;
};

} // namespace orbel::qt
