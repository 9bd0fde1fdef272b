// A start of the program as far as the session bus is concerned: says which role it got and ends.
#include "backends/qt/session/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  orbel::qt::SingleInstance instance({});
  switch (instance.start()) {
  case orbel::qt::SingleInstance::Role::first:
    std::puts("first");
    break;
  case orbel::qt::SingleInstance::Role::second:
    std::puts("second");
    break;
  case orbel::qt::SingleInstance::Role::alone:
    std::puts("alone");
    break;
  }
}
