# How the library is put together. The units and their arrows are the table in source/CMakeLists.txt.
#
#   ht_package(name target)       a package units may need, and the target that find_package gives for it
#   ht_unit(name [ON unit...]     a unit: the folder source/<name>, and the units it stands on directly
#           [NEEDS package...]    packages without which nothing can be configured
#           [OPTIONAL package...])  packages without which this unit is left out
#   ht_library()                  the whole, static and shared, with its install rules
#   ht_host(name [OPTIONAL package...])  code that stands where an application would: hosts/<name>
#   ht_add_program(name sources...)      a program that links the units and hosts whose headers it includes
#
# A unit is the target `<name>` with the alias `htcore::<name>`, the same name that an installed htcore gives.

set(HT_SOURCE_ROOT ${PROJECT_SOURCE_DIR}/source)
set(HT_HOSTS_ROOT ${PROJECT_SOURCE_DIR}/hosts)

# --- packages ---------------------------------------------------------------------------------------

# A target `PkgConfig::x` is looked for with pkg-config under the package's name, any other with find_package.
# A third argument names the pkg-config module for static linking of an installed htcore.
function(ht_package name target)
  set_property(GLOBAL PROPERTY HT_PACKAGE_${name}_TARGET ${target})
  set_property(GLOBAL PROPERTY HT_PACKAGE_${name}_MODULE ${ARGV2})
endfunction()

# Finds packages once each and sets `missing` to those that are not there. The targets are global.
function(ht_find_packages missing)
  set(not_found)
  foreach(package IN LISTS ARGN)
    get_property(target GLOBAL PROPERTY HT_PACKAGE_${package}_TARGET)
    if(NOT target)
      message(FATAL_ERROR "htcore: ${package} is not in the table of packages")
    elseif(NOT TARGET ${target})
      set(CMAKE_FIND_PACKAGE_TARGETS_GLOBAL ON)
      if(target MATCHES "^PkgConfig::")
        find_package(PkgConfig QUIET)
        if(PkgConfig_FOUND)
          pkg_check_modules(${package} QUIET IMPORTED_TARGET GLOBAL ${package})
        endif()
      else()
        find_package(${package} QUIET)
      endif()
      if(NOT TARGET ${target})
        list(APPEND not_found ${package})
      endif()
    endif()
  endforeach()
  set(${missing} ${not_found} PARENT_SCOPE)
endfunction()

function(ht_package_targets result)
  set(targets)
  foreach(package IN LISTS ARGN)
    get_property(target GLOBAL PROPERTY HT_PACKAGE_${package}_TARGET)
    list(APPEND targets ${target})
  endforeach()
  set(${result} ${targets} PARENT_SCOPE)
endfunction()

# Records that a part is left out, and says so in one line.
function(ht_leave_out name reason)
  message(STATUS "htcore: ${name} is left out: ${reason}")
  set_property(GLOBAL APPEND PROPERTY HT_LEFT_OUT ${name})
endfunction()

# --- units ------------------------------------------------------------------------------------------

function(ht_unit name)
  cmake_parse_arguments(PARSE_ARGV 1 unit "" "" "ON;NEEDS;OPTIONAL")
  list(JOIN unit_ON " " on)
  set_property(GLOBAL APPEND PROPERTY HT_TABLE "${name} ${on}")  # one line a unit, for the tests
  set_property(GLOBAL APPEND PROPERTY HT_NAMES ${name})

  file(GLOB sources CONFIGURE_DEPENDS ${HT_SOURCE_ROOT}/${name}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${HT_SOURCE_ROOT}/${name}/*.h ${HT_SOURCE_ROOT}/${name}/*.inc)
  if(NOT sources)
    return()  # not written yet
  endif()

  ht_find_packages(missing ${unit_NEEDS})
  if(missing)
    list(JOIN missing ", " missing)
    message(FATAL_ERROR "htcore: ${name} needs ${missing}. On Debian, scripts/setup installs what is missing.")
  endif()
  ht_find_packages(missing ${unit_OPTIONAL})
  get_property(left_out GLOBAL PROPERTY HT_LEFT_OUT)
  foreach(below IN LISTS unit_ON)
    if(below IN_LIST left_out)
      list(APPEND missing ${below})
    endif()
  endforeach()
  if(missing)
    list(JOIN missing ", " missing)
    ht_leave_out(${name} "${missing} not found")
    return()
  endif()

  ht_package_targets(packages ${unit_NEEDS} ${unit_OPTIONAL})
  set(below)
  foreach(unit IN LISTS unit_ON)
    if(TARGET ${unit})
      list(APPEND below ${unit})
    endif()
  endforeach()
  add_library(${name} STATIC ${sources} ${headers})
  add_library(htcore::${name} ALIAS ${name})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC ${HT_SOURCE_ROOT})
  target_link_libraries(${name} PUBLIC ${below} ${packages})
  # Calls between functions of one file stay direct and can be inlined, also in the shared library.
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)

  set_property(GLOBAL APPEND PROPERTY HT_UNITS ${name})
  set_property(GLOBAL APPEND PROPERTY HT_PACKAGES ${unit_NEEDS} ${unit_OPTIONAL})
  set_property(GLOBAL PROPERTY HT_UNIT_${name}_ON ${below})
  set_property(GLOBAL PROPERTY HT_UNIT_${name}_PACKAGES ${unit_NEEDS} ${unit_OPTIONAL})
endfunction()

function(ht_library)
  get_property(table GLOBAL PROPERTY HT_TABLE)
  list(JOIN table "\n" lines)
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/units.txt CONTENT "@lines@\n" @ONLY)

  get_property(units GLOBAL PROPERTY HT_UNITS)
  get_property(packages GLOBAL PROPERTY HT_PACKAGES)
  list(REMOVE_DUPLICATES packages)
  set(objects ${units})
  list(TRANSFORM objects REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>")

  add_library(htcore-static STATIC ${objects})
  add_library(htcore-shared SHARED ${objects})
  foreach(kind static shared)
    set(library htcore-${kind})
    add_library(htcore::htcore-${kind} ALIAS ${library})
    set_target_properties(${library} PROPERTIES OUTPUT_NAME htcore LINKER_LANGUAGE CXX
                          VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR})
    target_compile_features(${library} PUBLIC cxx_std_20)
    target_include_directories(${library} INTERFACE
      $<BUILD_INTERFACE:${HT_SOURCE_ROOT}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/htcore>)
  endforeach()
  ht_package_targets(targets ${packages})
  target_link_libraries(htcore-shared PRIVATE ${targets})
  # A static consumer needs the packages of the units it asked for and no others, so an installed htcore
  # links those that its configuration has looked for.
  foreach(target IN LISTS targets)
    target_link_libraries(htcore-static INTERFACE
      $<LINK_ONLY:$<BUILD_INTERFACE:${target}>>
      $<LINK_ONLY:$<INSTALL_INTERFACE:$<TARGET_NAME_IF_EXISTS:${target}>>>)
  endforeach()
  if(PROJECT_IS_TOP_LEVEL)
    include(HtInstall)
  endif()
endfunction()

# --- programs and hosts -----------------------------------------------------------------------------

# The units and hosts whose headers the sources include. Configuring again when a source changes keeps it true.
function(ht_parts_of result)
  get_property(names GLOBAL PROPERTY HT_NAMES)
  get_property(hosts GLOBAL PROPERTY HT_HOSTS)
  get_property(left_out GLOBAL PROPERTY HT_LEFT_OUT)
  set(parts)
  foreach(source IN LISTS ARGN)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${source})
    file(STRINGS ${source} includes REGEX "^[ \t]*#[ \t]*include[ \t]*\"[a-z0-9]+/")
    foreach(line IN LISTS includes)
      string(REGEX REPLACE "^[^\"]*\"([a-z0-9]+)/.*" "\\1" part "${line}")
      if(part IN_LIST names OR part IN_LIST hosts OR part IN_LIST left_out)
        list(APPEND parts ${part})
      endif()
    endforeach()
  endforeach()
  list(REMOVE_DUPLICATES parts)
  set(${result} ${parts} PARENT_SCOPE)
endfunction()

# Sets `missing` to those parts that this build does not have.
function(ht_missing_parts missing)
  set(not_there)
  foreach(part IN LISTS ARGN)
    if(NOT TARGET ${part})
      list(APPEND not_there ${part})
    endif()
  endforeach()
  set(${missing} ${not_there} PARENT_SCOPE)
endfunction()

function(ht_host name)
  cmake_parse_arguments(PARSE_ARGV 1 host "" "" "OPTIONAL")
  set_property(GLOBAL APPEND PROPERTY HT_HOSTS ${name})
  file(GLOB sources CONFIGURE_DEPENDS ${HT_HOSTS_ROOT}/${name}/*.cpp)
  file(GLOB headers CONFIGURE_DEPENDS ${HT_HOSTS_ROOT}/${name}/*.h)
  if(NOT sources)
    return()  # not written yet
  endif()
  ht_parts_of(parts ${sources} ${headers})
  list(REMOVE_ITEM parts ${name})
  ht_missing_parts(missing ${parts})
  ht_find_packages(missing_packages ${host_OPTIONAL})
  list(APPEND missing ${missing_packages})
  if(missing)
    list(JOIN missing ", " missing)
    ht_leave_out(${name} "${missing} not found")
    return()
  endif()
  ht_package_targets(packages ${host_OPTIONAL})
  add_library(${name} STATIC ${sources} ${headers})
  target_include_directories(${name} PUBLIC ${HT_HOSTS_ROOT})
  target_link_libraries(${name} PUBLIC ${parts} ${packages})
endfunction()

# The program is not added when a part is missing; callers ask `if(TARGET name)`.
function(ht_add_program name)
  set(sources ${ARGN})
  ht_parts_of(parts ${sources})
  ht_missing_parts(missing ${parts})
  if(missing)
    list(JOIN missing ", " missing)
    message(STATUS "htcore: ${name} is left out: this build has no ${missing}")
    return()
  endif()
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE ${parts})
endfunction()
