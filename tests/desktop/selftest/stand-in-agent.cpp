// An application on the session bus that knows the agent's name and its "quit" action and nothing else.
#include <gio/gio.h>

#include <iostream>

namespace {

void quit(GSimpleAction*, GVariant*, gpointer application) {
  g_application_quit(G_APPLICATION(application));
}

void activate(GApplication*, gpointer) {
  std::cerr << "activated" << std::endl;
}

} // namespace

int main(int argumentCount, char** arguments) {
  GApplication* application = g_application_new("org.orbelmenu.OrbelMenu", G_APPLICATION_IS_SERVICE);
  g_application_hold(application);
  g_signal_connect(application, "activate", G_CALLBACK(activate), nullptr);
  GSimpleAction* action = g_simple_action_new("quit", nullptr);
  g_signal_connect(action, "activate", G_CALLBACK(quit), application);
  g_action_map_add_action(G_ACTION_MAP(application), G_ACTION(action));
  const int status = g_application_run(application, argumentCount, arguments);
  g_object_unref(action);
  g_object_unref(application);
  return status;
}
