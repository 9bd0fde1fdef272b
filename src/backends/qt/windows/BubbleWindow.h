// The native window of a title bubble: transparent to input, above every surface, used again by
// later bubbles.
#pragma once

#include "backends/qt/canvas/BubbleLayout.h"

#include <QBackingStore>
#include <QImage>
#include <QString>
#include <QWindow>

namespace orbel::qt {

class DisplayServer;

class BubbleWindow : public QWindow {
public:
  // The display outlives the window.
  explicit BubbleWindow(DisplayServer& display);

  // Takes its place beside the anchor (screen points) and its picture; it is drawn anew only when
  // that changes.
  void place(const QString& text, const Rect& anchorOnScreen);
  // Maps it with the picture that place() has drawn, or unmaps it.
  void setMapped(bool mapped);
  // Screen points.
  Rect bodyFrame() const { return m_layout.body; }
  void compositorChanged();

protected:
  bool event(QEvent* event) override;

private:
  void paintNow();

  // What the picture was drawn for.
  struct Subject {
    QString text;
    double scale = 0;
    double arrow = 0;
    bool pointsUp = true;
    bool composited = true;
    friend bool operator==(const Subject&, const Subject&) = default;
  };

  void draw(const Subject& subject);

  DisplayServer& m_display;
  QBackingStore m_backingStore;
  Size m_bodySize; // measured for the subject's text
  BubbleLayout m_layout;
  Subject m_subject;
  QImage m_picture;
  Rect m_anchor;
};

} // namespace orbel::qt
