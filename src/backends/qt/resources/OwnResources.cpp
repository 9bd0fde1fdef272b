#include "backends/qt/resources/OwnResources.h"

#include <QtCore/qdir.h>
#include <QtCore/qglobal.h>

// The linker drops a static library's resources unless code names them, and the macro wants no namespace
// around it.
static void initializeResources() {
  Q_INIT_RESOURCE(orbelmenu);
}

namespace orbel::qt {

void OwnResources::load() {
  initializeResources();
}

} // namespace orbel::qt
