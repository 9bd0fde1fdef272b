// A program on the session bus as a test plays it: one object under one name, on a connection of its own, so
// that its end is the end of that program. Calls are answered while the default main context runs; `serve`
// lets it.
#pragma once

#include <functional>
#include <string>

using GDBusConnection = struct _GDBusConnection;
using GVariant = struct _GVariant;

namespace orbel::test {

class BusService {
public:
  struct Description {
    std::string name;
    std::string path;
    std::string introspection; // a node with one interface
    // The answer's values as a tuple; null for none. Takes the sender's unique name too.
    std::function<GVariant*(const std::string& method, GVariant* parameters, const std::string& sender)> call;
    std::function<GVariant*(const std::string& property)> property = {};
  };

  // Owns the name when it returns; throws std::runtime_error where that fails.
  BusService(const std::string& busAddress, Description description);
  ~BusService(); // as if the program crashed
  BusService(const BusService&) = delete;
  BusService& operator=(const BusService&) = delete;

  static void serve();
  void emit(const std::string& signal, GVariant* values) const;
  // Calls a method of another program and waits for the answer; null when that failed. `values` may be null.
  GVariant* ask(const std::string& name, const std::string& path, const std::string& interface,
                const std::string& method, GVariant* values) const;

private:
  Description m_description;
  std::string m_interface;
  GDBusConnection* m_connection = nullptr;
  unsigned m_object = 0;
};

} // namespace orbel::test
