// A program out of which files are dragged: file-drag X Y URI-LIST-FILE LOG; see FileDragWindow.h.
#include "tests/desktop/clients/EventLog.h"
#include "tests/desktop/clients/FileDragWindow.h"

#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

int main(int argumentCount, char** arguments) try {
  using namespace orbel::test;
  if (argumentCount != 5) throw std::invalid_argument("usage: file-drag X Y URI-LIST-FILE LOG");
  std::ifstream file(arguments[3], std::ios::binary);
  FileDragOptions options;
  options.x = std::stoi(arguments[1]);
  options.y = std::stoi(arguments[2]);
  options.uriList.assign(std::istreambuf_iterator<char>(file), {});
  EventLog log(arguments[4]);
  FileDragWindow(std::move(options), log).run();
  return EXIT_SUCCESS;
} catch (const std::exception& error) {
  std::cerr << error.what() << '\n';
  return EXIT_FAILURE;
}
