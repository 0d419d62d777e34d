# Where everything is installed, below any prefix. The programs find their files from their own place, so all folders are
# relative, and the prefix can be moved afterwards. docs/installation.md has the map.

set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)   # the target `installation` builds what is installed; tests are not

set(CV_PROGRAM_DIR bin)
set(CV_PRIVATE_DIR lib/corvane-print)       # shared libraries, the window's module, PlugIns/ and Help/
set(CV_PLUGIN_DIR ${CV_PRIVATE_DIR}/PlugIns)
set(CV_DATA_DIR share/corvane-print)        # models/: the sample printers, texts/: the window's own
set(CV_INCLUDE_DIR include/corvane-panels)
set(CV_CMAKE_DIR lib/cmake/CorvanePanels)
set(CV_PKGCONFIG_DIR share/pkgconfig)
set(CV_DOC_DIR share/doc/corvane-print)

# Components, one Debian package each (packaging/CMakeLists.txt):
#   program        the programs, the libraries, the plug-in with its help, the sample printers
#   window         the print dialog's window, and how a desktop starts it
#   development    what a host of one's own is built with
#   documentation  the documents

add_custom_target(installation)

# cv_set_run_path(<target> <path>...)  Where the target finds its libraries, in the build folder as well: a path that only
# installing sets would be padded there with empty entries, each of which has the linker look in the current folder.
function(cv_set_run_path target)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "${ARGN}" BUILD_WITH_INSTALL_RPATH ON)
endfunction()

# The build folder keeps its libraries in lib/, and there they are also found where they are installed.
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
file(CREATE_LINK . ${PROJECT_BINARY_DIR}/${CV_PRIVATE_DIR} SYMBOLIC)

# cv_install_program(<target>)
function(cv_install_program target)
  cv_set_run_path(${target} "$ORIGIN/../${CV_PRIVATE_DIR}")
  install(TARGETS ${target} RUNTIME DESTINATION ${CV_PROGRAM_DIR} COMPONENT program)
  add_dependencies(installation ${target})
endfunction()

# cv_install_module(<target> <folder> <component>)  A shared object that is loaded, with the libraries it was built with.
function(cv_install_module target folder component)
  file(RELATIVE_PATH libraries /${folder} /${CV_PRIVATE_DIR})
  string(REGEX REPLACE "(.)/$" "\\1" origin "$ORIGIN/${libraries}")
  if(folder STREQUAL CV_PRIVATE_DIR)
    cv_set_run_path(${target} "${origin}")
  else()
    cv_set_run_path(${target} "${origin}" "${origin}/lib") # the latter in the build folder
  endif()
  install(TARGETS ${target} LIBRARY DESTINATION ${folder} COMPONENT ${component})
  add_dependencies(installation ${target})
endfunction()

# cv_install_room(<room> <header>...)  A shared library and the headers that show it, for hosts of one's own.
function(cv_install_room room)
  cv_set_run_path(cv_${room} "$ORIGIN")
  set_target_properties(cv_${room} PROPERTIES EXPORT_NAME ${room})
  target_include_directories(cv_${room} INTERFACE $<INSTALL_INTERFACE:${CV_INCLUDE_DIR}>)
  target_compile_features(cv_${room} INTERFACE cxx_std_20)
  install(TARGETS cv_${room} EXPORT CorvanePanels
    LIBRARY DESTINATION ${CV_PRIVATE_DIR} COMPONENT program NAMELINK_COMPONENT development)
  install(FILES ${ARGN} ${PROJECT_BINARY_DIR}/exports/${room}/export.h
    DESTINATION ${CV_INCLUDE_DIR}/${room} COMPONENT development)
  add_dependencies(installation cv_${room})
endfunction()
