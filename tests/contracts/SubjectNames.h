// Names the instances of a contract after what is tested: each Subject has a constant kName.
#pragma once

#include <string>

namespace orbel::contracts {

struct SubjectNames {
  template <class Subject>
  static std::string GetName(int) {
    return Subject::kName;
  }
};

} // namespace orbel::contracts
