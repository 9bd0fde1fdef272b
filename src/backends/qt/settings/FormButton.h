// A push button in the settings window's own look: a field with words, a small disc with one character, or
// words to click like a link.
#pragma once

#include <QPushButton>

namespace orbel::qt {

class FormButton : public QPushButton {
public:
  enum class Shape { field, disc, link };

  FormButton(Shape shape, const QString& text, QWidget* parent = nullptr);

  QSize sizeHint() const override;

protected:
  void paintEvent(QPaintEvent* event) override;

private:
  Shape m_shape;
};

} // namespace orbel::qt
