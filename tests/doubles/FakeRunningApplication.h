// A running program made of plain members.
#pragma once

#include "platform/RunningApplication.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace orbel {

class FakeRunningApplication : public RunningApplication {
public:
  FakeRunningApplication(std::int32_t processIdentifier, std::string name, std::string bundle = {},
                         std::string executable = {})
      : pid(processIdentifier), appName(std::move(name)) {
    if (!bundle.empty()) bundleFile = std::move(bundle);
    if (!executable.empty()) executableFile = std::move(executable);
  }

  std::int32_t processIdentifier() const override { return pid; }
  std::string localizedName() const override { return appName; }
  std::optional<std::string> bundlePath() const override { return bundleFile; }
  std::optional<std::string> executablePath() const override { return executableFile; }
  ImagePointer icon() const override { return iconImage; }
  ActivationPolicy activationPolicy() const override { return policy; }
  bool isTerminated() const override { return terminated; }
  bool canBeAskedToClose() const override { return closable; }
  bool activate(ActivationReason reason) override {
    activations.push_back(reason);
    return activationSucceeds && !terminated;
  }
  bool isEqual(const RunningApplication& other) const override {
    const auto* record = dynamic_cast<const FakeRunningApplication*>(&other);
    return record && pid == record->pid && startTime == record->startTime;
  }

  std::int32_t pid;
  int startTime = 0; // distinguishes the processes that have had the identifier one after the other
  std::string appName;
  std::optional<std::string> bundleFile;
  std::optional<std::string> executableFile;
  ImagePointer iconImage;
  ActivationPolicy policy = ActivationPolicy::regular;
  bool terminated = false;
  bool activationSucceeds = true;
  bool closable = true;
  std::vector<ActivationReason> activations;
};

} // namespace orbel
