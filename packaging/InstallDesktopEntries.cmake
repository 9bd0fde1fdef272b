# Writes the desktop entries at the installation, with the programs' places in them. Expects ORBEL_PACKAGING_FOLDER,
# ORBEL_INSTALL_BINDIR and ORBEL_INSTALL_DATADIR, the latter two absolute or below the prefix.
cmake_path(ABSOLUTE_PATH ORBEL_INSTALL_BINDIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE programs)
cmake_path(ABSOLUTE_PATH ORBEL_INSTALL_DATADIR BASE_DIRECTORY "${CMAKE_INSTALL_PREFIX}" OUTPUT_VARIABLE data)

# A path as the first word of an Exec line.
function(orbel_exec_word path result)
  string(REPLACE "%" "%%" word "${path}") # else a field code
  if(NOT path MATCHES "^[A-Za-z0-9/._+,:@%-]*$")
    string(REGEX REPLACE "([\"`$\\\\])" "\\\\\\1" word "${word}")
    string(REPLACE "\\" "\\\\" word "\"${word}\"") # the file has escapes of its own
  endif()
  set(${result} "${word}" PARENT_SCOPE)
endfunction()

orbel_exec_word("${programs}/orbelmenu" ORBEL_EXEC_ORBELMENU)
orbel_exec_word("${programs}/orbelmenu-toolkit" ORBEL_EXEC_TOOLKIT)
foreach(entry org.orbelmenu.OrbelMenu org.orbelmenu.Toolkit)
  configure_file("${ORBEL_PACKAGING_FOLDER}/${entry}.desktop.in" "$ENV{DESTDIR}${data}/applications/${entry}.desktop" @ONLY)
endforeach()

# Desktops find the companion's URL scheme through this cache; a staged installation is registered by its package.
find_program(UPDATE_DESKTOP_DATABASE update-desktop-database)
if(UPDATE_DESKTOP_DATABASE AND "$ENV{DESTDIR}" STREQUAL "")
  execute_process(COMMAND ${UPDATE_DESKTOP_DATABASE} -q "${data}/applications")
endif()
