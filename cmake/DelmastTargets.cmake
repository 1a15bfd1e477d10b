# SPDX-FileCopyrightText: 2026 The Delmast Time authors
# SPDX-License-Identifier: BSD-3-Clause

add_compile_definitions(TRANSLATION_DOMAIN="delmasttime")
add_compile_options(-Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
if(DELMAST_WERROR)
  add_compile_options(-Werror)
endif()

# delmast_add_layer(NAME SOURCES file... LINK target...)
#
# One static library per folder of src/. What a layer may include is what its link line names:
# headers are found by "layer/header.h" and tests/lint checks the direction.
function(delmast_add_layer name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(delmast_${name} STATIC ${ARG_SOURCES})
  add_library(Delmast::${name} ALIAS delmast_${name})
  target_include_directories(delmast_${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(delmast_${name} PUBLIC ${ARG_LINK})
endfunction()

# delmast_add_test(NAME LINK target... [SOURCES more files])
#
# A test program NAME built from NAME.cpp and run by ctest: offscreen, in a fixed locale and time zone, with a
# home folder of its own, so that no result depends on the machine that runs it.
function(delmast_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINK} Qt::Test)
  target_compile_definitions(${name} PRIVATE TEST_DATA_DIR="${CMAKE_CURRENT_SOURCE_DIR}/data")
  add_test(NAME ${name} COMMAND ${name})
  set(home ${CMAKE_CURRENT_BINARY_DIR}/${name}-home)
  set_tests_properties(${name} PROPERTIES
    TIMEOUT 300
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;LANGUAGE=C;TZ=Europe/Helsinki;HOME=${home};XDG_CONFIG_HOME=${home}/config;XDG_DATA_HOME=${home}/data;XDG_CACHE_HOME=${home}/cache;XDG_RUNTIME_DIR=${home}/run;DBUS_SESSION_BUS_ADDRESS=disabled:;QT_LOGGING_RULES=kf.i18n=false")
  file(MAKE_DIRECTORY ${home}/run)
  file(CHMOD ${home}/run PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
endfunction()
