// The pictures and texts that ship inside the program: ":/icons/<name>.svg" and
// ":/translations/<language>.json". Loaded by whoever reads them.
#pragma once

namespace orbel::qt {

class OwnResources {
public:
  // Makes them readable; again is harmless.
  static void load();
};

} // namespace orbel::qt
