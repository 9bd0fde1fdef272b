// A start of the program as far as the session bus is concerned: says which role it got and ends.
#include "backends/qt/SingleInstance.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  orbel::SingleInstance instance({});
  switch (instance.start()) {
  case orbel::SingleInstance::Role::first:
    std::puts("first");
    break;
  case orbel::SingleInstance::Role::second:
    std::puts("second");
    break;
  case orbel::SingleInstance::Role::alone:
    std::puts("alone");
    break;
  }
}
