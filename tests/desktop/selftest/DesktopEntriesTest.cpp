#include "tests/desktop/harness/DesktopEntries.h"

#include "tests/desktop/harness/SharedDesktop.h"
#include "tests/desktop/harness/TestWindow.h"
#include "tests/support/base/TextFile.h"
#include "tests/support/base/Waiting.h"

#include <gtest/gtest.h>

using namespace orbel::test;

namespace {

class DesktopEntriesTest : public testing::Test {
protected:
  // An application that opens documents, with a program of its own.
  void installViewer(const std::string& id, const std::string& title) {
    const auto program = m_session.copyProgram(TestWindow::clientPath("document-viewer"), id);
    auto command = TestWindow::command({.title = title, .className = id}, m_session.logFile(id), program);
    command.emplace_back("%F");
    m_session.entries().install({.id = id,
                                 .name = title,
                                 .command = command,
                                 .windowClass = id,
                                 .mimeTypes = {"text/plain"},
                                 .further = {{"Categories", "Office;"}}});
  }

  SharedDesktop m_desktop{{.windowManager = WindowManagerKind::openbox}};
  DesktopSession& m_session = m_desktop.session();
};

TEST_F(DesktopEntriesTest, OpensADocumentInTheDefaultApplication) {
  installViewer("first-viewer", "First");
  installViewer("second-viewer", "It costs \"5 $\", 100 %, a \\ and a `");
  m_session.entries().setDefault("text/plain", "second-viewer");
  const auto document = m_session.home() / "a letter.txt";
  writeFile(document, "Dear reader,\n");

  const RunResult result = m_session.run({"gio", "open", document.string()});
  ASSERT_EQ(result.exitStatus, 0) << result.errors;
  const ClientLog viewer(m_session.logFile("second-viewer"));
  EXPECT_TRUE(waitFor([&] { return viewer.contains("mapped"); }, "the second viewer is open"));
  EXPECT_EQ(viewer.linesOf("open"), std::vector{"open " + document.string()});
  EXPECT_TRUE(waitFor(
      [&] { return m_session.windows().findByTitle("It costs \"5 $\", 100 %, a \\ and a `").has_value(); },
      "its title is seen"));
  EXPECT_TRUE(ClientLog(m_session.logFile("first-viewer")).lines().empty());
}

TEST_F(DesktopEntriesTest, KnowsNoApplicationOfTheMachine) {
  EXPECT_NE(m_session.run({"gio", "mime", "text/plain"}).output.find("No default"), std::string::npos);
  installViewer("viewer", "Viewer");
  EXPECT_NE(m_session.run({"gio", "mime", "text/plain"}).output.find("viewer.desktop"), std::string::npos);
  m_session.entries().remove("viewer");
  EXPECT_EQ(m_session.run({"gio", "mime", "text/plain"}).output.find("viewer.desktop"), std::string::npos);
}

} // namespace
