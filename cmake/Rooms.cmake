# The rooms of the house and the floors they stand on. An arrow may only point down: a room may use rooms
# of a lower floor, and those of its own row below. cv_room() refuses every other link when CMake configures.

include(GenerateExportHeader)

#   room              floor  may use
set(CV_ROOM_toolkit        1 "")
set(CV_ROOM_printing       1 "")
set(CV_ROOM_imaging        1 "")
set(CV_ROOM_framework      2 toolkit printing imaging)
set(CV_ROOM_print_settings 3 framework toolkit printing imaging)
set(CV_ROOM_color_settings 3 framework toolkit printing imaging)
set(CV_ROOM_plugin         4 print_settings color_settings framework toolkit printing imaging)
set(CV_ROOM_host_jobs      4 framework toolkit printing imaging)
set(CV_ROOM_host_session   4 host_jobs framework toolkit printing imaging)
set(CV_ROOM_host_script    4 host_session host_jobs framework toolkit printing imaging)
set(CV_ROOM_host_command_line 4 host_session host_jobs framework toolkit printing imaging)
set(CV_ROOM_host_window    4 host_command_line host_session host_jobs framework toolkit printing imaging)
set(CV_ROOM_apps           5 host_command_line host_script host_session host_jobs framework toolkit printing imaging)

# cv_check_uses(<room> <used room>...)  Stops the configuration at the first arrow that does not point down.
function(cv_check_uses room)
  if(NOT DEFINED CV_ROOM_${room})
    message(FATAL_ERROR "There is no room '${room}'. The rooms are listed in cmake/Rooms.cmake.")
  endif()
  foreach(used IN LISTS ARGN)
    if(NOT used IN_LIST CV_ROOM_${room})
      message(FATAL_ERROR "Room '${room}' may not use room '${used}': arrows point down only (cmake/Rooms.cmake).")
    endif()
  endforeach()
endfunction()

# cv_room(<room> SHARED|STATIC|MODULE SOURCES <file>... [INTERNAL <header>...] [USES <room>...] [SHOWS <target>...] [LIBRARIES <target>...])
# One library per room: cv_<room>, linked by others as CV::<room>. USES are public (a room's headers show the rooms below
# it), SHOWS are public outside libraries, LIBRARIES are private ones, which its headers do not show. What is shown is
# linked first: a library looks for its names in all that stand before it, and Qt has thousands. A shared library is
# installed with all of its headers that are not INTERNAL.
function(cv_room room type)
  cmake_parse_arguments(PARSE_ARGV 2 ROOM "" "" "SOURCES;INTERNAL;USES;SHOWS;LIBRARIES")
  cv_check_uses(${room} ${ROOM_USES})
  add_library(cv_${room} ${type} ${ROOM_SOURCES})
  add_library(CV::${room} ALIAS cv_${room})
  target_include_directories(cv_${room} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_BINARY_DIR}/exports>)
  list(TRANSFORM ROOM_USES PREPEND CV::)
  target_link_libraries(cv_${room} PUBLIC ${ROOM_SHOWS} ${ROOM_USES} PRIVATE ${ROOM_LIBRARIES})
  if(CV_COVERAGE) # of the rooms alone: tests are not what is measured
    target_compile_options(cv_${room} PRIVATE --coverage -O0)
    target_link_options(cv_${room} PUBLIC --coverage)
  endif()
  if(type STREQUAL SHARED)
    generate_export_header(cv_${room} BASE_NAME CV_${room}
      EXPORT_FILE_NAME ${PROJECT_BINARY_DIR}/exports/${room}/export.h)
    set_target_properties(cv_${room} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    list(FILTER ROOM_SOURCES INCLUDE REGEX "\\.h$")
    list(REMOVE_ITEM ROOM_SOURCES ${ROOM_INTERNAL})
    cv_install_room(${room} ${ROOM_SOURCES})
  endif()
endfunction()
