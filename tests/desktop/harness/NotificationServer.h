// The desktop's notification area, which writes down what it was given to show.
#pragma once

#include "tests/desktop/harness/BusService.h"

#include <memory>
#include <string>
#include <vector>

namespace orbel::test {

class NotificationServer {
public:
  explicit NotificationServer(const std::string& busAddress);

  struct Message {
    std::string program;
    std::string title;
    std::string text;
  };
  // So far. Serves what waits.
  const std::vector<Message>& messages();

private:
  std::vector<Message> m_messages;
  std::unique_ptr<BusService> m_service;
};

} // namespace orbel::test
