// A pop-up button in the settings window's own look: shows the chosen entry, and a list of all when it is
// pressed. Entries are known by their tags. The wheel does not change it, since the window may just be
// passing under the pointer.
#pragma once

#include <QComboBox>

#include <cstdint>

namespace orbel::qt {

class FormPopUpButton : public QComboBox {
public:
  explicit FormPopUpButton(QWidget* parent = nullptr);

  // The list of entries gets round corners where windows can be translucent.
  void setTranslucentList(bool translucent);
  void addEntry(const QString& title, std::int64_t tag);
  // An unknown tag changes nothing.
  void selectEntryWithTag(std::int64_t tag);
  std::int64_t selectedTag() const;

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void changeEvent(QEvent* event) override;

private:
  void styleList();

  bool m_translucentList = false;
};

} // namespace orbel::qt
