// Owns what the process has once (the settings, the notification centre, the image cache, the tables of
// shortcuts), and so gives it a beginning and an end. Each object is made when it is first asked for. The
// classes' own operations (sharedInstance(), defaultCenter(), ...) ask here, and are what everybody else
// calls. main makes the owner after the platform, which therefore outlives what is shared; FakePlatform makes
// one, so that no test leaves anything to the next. Main thread only.
#pragma once

#include <memory>
#include <typeindex>
#include <typeinfo>
#include <vector>

namespace orbel {

class SharedObjects {
public:
  // The process's owner from now on. One that was there before is so again when this one ends.
  SharedObjects();
  // Destroys the objects, the one that was completed last first. An object that uses another one in its
  // destructor therefore asks for it in its constructor.
  ~SharedObjects();
  SharedObjects(const SharedObjects&) = delete;
  SharedObjects& operator=(const SharedObjects&) = delete;

  // Asking while there is none ends the program: nothing would end what is made then.
  static SharedObjects& current();

  // Made by its default constructor unless it is there. A class with a private one declares this class
  // a friend.
  template <class Object>
  Object& get() {
    if (void* present = find(typeid(Object))) return *static_cast<Object*>(present);
    std::shared_ptr<Object> made(new Object);
    m_slots.push_back({typeid(Object), made});
    return *made;
  }

  // Ends that object alone, if it is there; the next get() makes a new one.
  template <class Object>
  void destroy() {
    destroy(typeid(Object));
  }

private:
  struct Slot {
    std::type_index type;
    std::shared_ptr<void> object;
  };
  void* find(std::type_index type) const;
  void destroy(std::type_index type);

  SharedObjects* m_earlier;
  std::vector<Slot> m_slots; // in the order in which they were completed
};

} // namespace orbel
