# What every target of the project shares: language, warnings, sanitizers, include root.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Without -Wnull-dereference: newer compilers see one in `if (weak) weak->...`, which asks a QPointer
# twice. Real ones are found by the linter's analyser.
add_library(zarvy_warnings INTERFACE)
target_compile_options(zarvy_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Wold-style-cast -Wcast-align
  -Woverloaded-virtual -Wconversion -Wsign-conversion -Wformat=2)

# What Qt had given up by the release of Debian 12, or where it is there by that of Debian 13, is not used.
set(ZARVY_QT_WITHOUT_DEPRECATED 0x060400)
if(Qt6_VERSION VERSION_GREATER_EQUAL 6.8)
  set(ZARVY_QT_WITHOUT_DEPRECATED 0x060800)
endif()

add_library(zarvy_options INTERFACE)
target_link_libraries(zarvy_options INTERFACE zarvy_warnings)
target_compile_definitions(zarvy_options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH QT_NO_KEYWORDS
  QT_DISABLE_DEPRECATED_BEFORE=${ZARVY_QT_WITHOUT_DEPRECATED})
if(ZARVY_SANITIZE)
  target_compile_options(zarvy_options INTERFACE
    -fsanitize=${ZARVY_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(zarvy_options INTERFACE -fsanitize=${ZARVY_SANITIZE})
endif()

# zarvy_library(<name> SOURCES <file>... [PUBLIC <target>...] [PRIVATE <target>...])
#
# One room of the house. What a room may include is what it links here: headers are found from the
# include root, so the rule is kept by the list of links and by the layering check of the test script.
function(zarvy_library name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${ROOM_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${ROOM_PUBLIC} PRIVATE zarvy_options ${ROOM_PRIVATE})
endfunction()
