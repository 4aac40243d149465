# One engine target a folder, one test program a folder.

# yunshan_engine(<name> FOLDERS <dir>... DEPENDS <targets>...): the static library yunshan_<name> of
# all sources of the folder that calls it (and of the given sub-folders), on QtCore only.
function(yunshan_engine name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS" ${ARGN})
  set(globs *.cpp *.h)
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND globs ${folder}/*.cpp ${folder}/*.h)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${globs})
  add_library(yunshan_${name} STATIC ${sources})
  target_include_directories(yunshan_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(yunshan_${name} PUBLIC Qt6::Core ${ARG_DEPENDS})
  if(name STREQUAL "runtime")
    target_precompile_headers(yunshan_runtime PRIVATE ${PROJECT_SOURCE_DIR}/cmake/Precompiled.h)
  else()
    target_precompile_headers(yunshan_${name} REUSE_FROM yunshan_runtime)
  endif()
endfunction()

# yunshan_paint(<name> DEPENDS <targets>...): the static library yunshan_<name>_paint of what a folder
# paints on any device, which adds QtGui to its engine.
function(yunshan_paint name)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(yunshan_${name}_paint STATIC ${sources})
  target_link_libraries(yunshan_${name}_paint PUBLIC yunshan_${name} Qt6::Gui ${ARG_DEPENDS})
endfunction()

# yunshan_screens(<name> DEPENDS <targets>...): the static library yunshan_<name>_ui of the screens of a
# folder, which adds QtWidgets to its engine.
function(yunshan_screens name)
  cmake_parse_arguments(ARG "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS *.cpp *.h)
  add_library(yunshan_${name}_ui STATIC ${sources})
  set_property(GLOBAL APPEND PROPERTY YUNSHAN_SCREENS yunshan_${name}_ui)
  target_link_libraries(yunshan_${name}_ui PUBLIC yunshan_${name} yunshan_widgets ${ARG_DEPENDS})
  target_precompile_headers(yunshan_${name}_ui REUSE_FROM yunshan_widgets)
endfunction()

# yunshan_test(<name> FOLDERS <dir>... DEPENDS <targets>...): the test program test_<name> of all sources
# of the folder that calls it (and of the given sub-folders); every test case is a test of its own in
# ctest.
function(yunshan_test name)
  cmake_parse_arguments(ARG "" "" "FOLDERS;DEPENDS" ${ARGN})
  set(globs *.cpp *.h)
  foreach(folder IN LISTS ARG_FOLDERS)
    list(APPEND globs ${folder}/*.cpp ${folder}/*.h)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${globs})
  add_executable(test_${name} ${sources})
  target_link_libraries(test_${name} PRIVATE yunshan_test_support ${ARG_DEPENDS})
  target_precompile_headers(test_${name} REUSE_FROM yunshan_runtime)
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60
                       PROPERTIES TIMEOUT 120)
endfunction()
