// An ordinary program for tests: one window, see ClientOptions.h for the options and ClientWindow.h for
// its log.
#include "tests/desktop/clients/ClientOptions.h"
#include "tests/desktop/clients/ClientWindow.h"
#include "tests/desktop/clients/EventLog.h"

#include <cstdlib>
#include <exception>
#include <iostream>

int main(int argumentCount, char** arguments) try {
  using namespace orbel::test;
  const ClientOptions options = ClientOptions::parse({arguments + 1, arguments + argumentCount});
  EventLog log(options.log);
  ClientWindow(options, log).run();
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
