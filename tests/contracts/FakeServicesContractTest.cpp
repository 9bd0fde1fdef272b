// The contracts of text, drawing, menus and dialogs, for the doubles.
#include "tests/contracts/ContextMenusContract.h"
#include "tests/contracts/DialogsContract.h"
#include "tests/contracts/GraphicsContract.h"
#include "tests/contracts/TextServicesContract.h"
#include "tests/doubles/FakeSystemServices.h"
#include "tests/doubles/FakeWindowSystem.h"

namespace orbel::contracts {
namespace {

class FakeTextServicesSubject {
public:
  TextServices& text() { return m_text; }

private:
  FakeTextServices m_text;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeTextServicesContract, TextServicesContract, FakeTextServicesSubject);

class FakeGraphicsSubject {
public:
  Graphics& graphics() { return m_graphics; }

private:
  FakeGraphics m_graphics;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeGraphicsContract, GraphicsContract, FakeGraphicsSubject);

class FakeContextMenusSubject {
public:
  FakeContextMenusSubject() { m_surface->setFrame({300, 400, 400, 400}); }
  ContextMenus& menus() { return m_menus; }
  const Surface& surface() const { return *m_surface; }
  Point place() const {
    const Point origin = m_menus.surface->frame().origin;
    return {origin.x + m_menus.place.x, origin.y + m_menus.place.y};
  }
  bool isOpen() const { return m_menus.isOpen; }
  std::vector<std::string> titles() const { return m_menus.visibleTitles(); }
  void choose(const std::string& title) { EXPECT_TRUE(m_menus.choose(title)); }
  void tryToChoose(const std::string& title) { m_menus.choose(title); }
  void dismiss() { m_menus.close(); }

private:
  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_surface = m_windows.makeSurface(SurfaceLevel::menu);
  FakeContextMenus m_menus;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeContextMenusContract, ContextMenusContract, FakeContextMenusSubject);

class FakeDialogsSubject {
public:
  Dialogs& dialogs() { return m_dialogs; }
  const Surface* owner() const { return m_surface.get(); }
  bool isAnyOpen() const { return m_dialogs.prompt || m_dialogs.alert || m_dialogs.panel; }
  void answerPrompt(const std::string& text) { m_dialogs.answerPrompt(text); }
  void cancelPrompt() { m_dialogs.answerPrompt(std::nullopt); }
  void closeAlert() { m_dialogs.closeAlert(); }
  static std::string file(const std::string& name) { return "/files/" + name; }
  bool choose(const std::string& path) { return m_dialogs.answerPanel(path); }
  void cancelPanel() { m_dialogs.answerPanel(std::nullopt); }

private:
  FakeWindowSystem m_windows;
  std::unique_ptr<Surface> m_surface = m_windows.makeSurface(SurfaceLevel::menu);
  FakeDialogs m_dialogs;
};

INSTANTIATE_TYPED_TEST_SUITE_P(FakeDialogsContract, DialogsContract, FakeDialogsSubject);

} // namespace
} // namespace orbel::contracts
