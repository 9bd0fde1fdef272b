# The pictures and texts that ship inside the program. The C++ side is OwnResources.
set(resources ${CMAKE_CURRENT_LIST_DIR}/../../../resources)
file(GLOB shipped CONFIGURE_DEPENDS ${resources}/icons/*.svg ${resources}/translations/*.json
     ${resources}/video/*.svg)
qt_add_resources(orbel_backend_qt orbelmenu PREFIX / BASE ${resources} FILES ${shipped})
