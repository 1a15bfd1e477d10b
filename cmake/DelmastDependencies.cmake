# SPDX-FileCopyrightText: 2026 The Delmast Time authors
# SPDX-License-Identifier: BSD-3-Clause
#
# Finds the toolkit and the frameworks of the chosen generation and gives them names without a version,
# so that no other build file knows which of the two it is.

set(QT_MIN_VERSION 5.15.2)
find_package(Qt${QT_MAJOR_VERSION} ${QT_MIN_VERSION} REQUIRED COMPONENTS Core Gui Widgets DBus Network Svg PrintSupport Test)
if(QT_MAJOR_VERSION EQUAL 5)
  foreach(component Core Gui Widgets DBus Network Svg PrintSupport Test)
    if(NOT TARGET Qt::${component})
      add_library(Qt::${component} ALIAS Qt5::${component})
    endif()
  endforeach()
endif()

set(DELMAST_KF_COMPONENTS
    CalendarCore Config ConfigWidgets Contacts CoreAddons I18n IconThemes KIO Notifications WidgetsAddons WindowSystem
    XmlGui)
if(QT_MAJOR_VERSION EQUAL 5)
  find_package(KF5 5.103 REQUIRED COMPONENTS ${DELMAST_KF_COMPONENTS})
  set(DELMAST_KF_TARGETS
      CalendarCore ConfigCore ConfigGui ConfigWidgets Contacts CoreAddons I18n IconThemes KIOCore KIOFileWidgets KIOGui
      KIOWidgets Notifications WidgetsAddons WindowSystem XmlGui)
  add_library(KF::StatusNotifierItem ALIAS KF5::Notifications)
else()
  find_package(KF6 6.13 REQUIRED COMPONENTS ${DELMAST_KF_COMPONENTS} StatusNotifierItem)
  set(DELMAST_KF_TARGETS
      CalendarCore ConfigCore ConfigGui ConfigWidgets Contacts CoreAddons I18n IconThemes KIOCore KIOFileWidgets KIOGui
      KIOWidgets Notifications WidgetsAddons WindowSystem XmlGui)
  add_library(KF::StatusNotifierItem ALIAS KF6::StatusNotifierItem)
endif()
foreach(component ${DELMAST_KF_TARGETS})
  if(NOT TARGET KF::${component})
    add_library(KF::${component} ALIAS KF${QT_MAJOR_VERSION}::${component})
  endif()
endforeach()

# Much comes with it, so it is used where it is installed and not asked for.
find_package(Akonadi QUIET NAMES KPim${QT_MAJOR_VERSION}Akonadi KF${QT_MAJOR_VERSION}Akonadi)
foreach(namespace KPim${QT_MAJOR_VERSION} KF${QT_MAJOR_VERSION})
  if(TARGET ${namespace}::AkonadiCore AND NOT TARGET Akonadi::Core)
    add_library(Akonadi::Core ALIAS ${namespace}::AkonadiCore)
  endif()
endforeach()

find_package(EXPAT REQUIRED)

# What the notifications play their sounds with has no package file of its own.
find_path(Canberra_INCLUDE_DIR canberra.h REQUIRED)
find_library(Canberra_LIBRARY canberra REQUIRED)
add_library(Canberra::Canberra UNKNOWN IMPORTED)
set_target_properties(Canberra::Canberra PROPERTIES
  IMPORTED_LOCATION ${Canberra_LIBRARY}
  INTERFACE_INCLUDE_DIRECTORIES ${Canberra_INCLUDE_DIR})

find_program(DELMAST_CCACHE ccache)
if(DELMAST_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${DELMAST_CCACHE})
endif()
