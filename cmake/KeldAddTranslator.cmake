# keld_add_translator(<name> SOURCES <file>... [LIBRARIES <target>...] [ENVIRONMENT <NAME=value>...]):
# a translator for a format.
#
# Builds the executable keld_<name>_linux_x86_64 from the sources, which hold its main(), and lays
# the script keld_<name>.sh beside it, through which hosts start it. Both are installed to the bin
# directory. The script sets those variables of ENVIRONMENT that are not set already. An installed translator finds the toolkit's libraries in the lib directory beside bin,
# or wherever they lay when it was linked.
include(GNUInstallDirs)

# Finds the executable beside itself, also when it was called through a symbolic link.
set(KELD_TRANSLATOR_SCRIPT [=[
#!/bin/sh
self=$0
if [ -L "$self" ]; then
    self=$(readlink -f "$self")
fi
case $self in
    */*) directory=${self%/*} ;;
    *) directory=. ;;
esac
@KELD_TRANSLATOR_EXPORTS@exec "$directory/@KELD_TRANSLATOR_EXECUTABLE@" "$@"
]=])

function(keld_add_translator name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;ENVIRONMENT")
  if(NOT arg_SOURCES OR arg_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "usage: keld_add_translator(<name> SOURCES <file>... [LIBRARIES <target>...] "
                        "[ENVIRONMENT <NAME=value>...])")
  endif()
  set(KELD_TRANSLATOR_EXECUTABLE keld_${name}_linux_x86_64)
  set(target ${KELD_TRANSLATOR_EXECUTABLE})

  add_executable(${target} ${arg_SOURCES})
  if(COMMAND keld_target_defaults)
    keld_target_defaults(${target})
  endif()
  target_link_libraries(${target} PRIVATE keld::translator-kit keld::transl ${arg_LIBRARIES})
  file(RELATIVE_PATH lib_from_bin ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(${target} PROPERTIES
    INSTALL_RPATH "$ORIGIN/${lib_from_bin}"
    INSTALL_RPATH_USE_LINK_PATH ON)

  set(KELD_TRANSLATOR_EXPORTS "")
  foreach(variable IN LISTS arg_ENVIRONMENT)
    string(REGEX REPLACE "^([A-Z_]+)=(.*)$" "export \"\\1=\${\\1-\\2}\"\n" line "${variable}")
    string(APPEND KELD_TRANSLATOR_EXPORTS "${line}")
  endforeach()

  set(directory ${CMAKE_CURRENT_BINARY_DIR})
  if(CMAKE_RUNTIME_OUTPUT_DIRECTORY)
    set(directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  endif()
  set(script ${directory}/keld_${name}.sh)
  file(CONFIGURE OUTPUT ${script} CONTENT "${KELD_TRANSLATOR_SCRIPT}" @ONLY)
  file(CHMOD ${script} PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

  install(TARGETS ${target} RUNTIME)
  install(PROGRAMS ${script} TYPE BIN)
endfunction()
