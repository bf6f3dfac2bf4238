# Compiler settings and the few functions that the CMakeLists of the layers are written with.

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${CCACHE_PROGRAM})
endif()
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  add_link_options(-fuse-ld=mold)
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
if(TAVLO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
endif()

if(TAVLO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# tavlo_layer(<name> LINKS <layers...> SOURCES <files...>)
# One folder of src/ as a static library tavlo_<name>. LINKS is its permission: what it may include.
function(tavlo_layer name)
  cmake_parse_arguments(ARG "" "" "LINKS;SOURCES" ${ARGN})
  add_library(tavlo_${name} STATIC ${ARG_SOURCES})
  target_include_directories(tavlo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tavlo_${name} PUBLIC ${ARG_LINKS})
endfunction()

# tavlo_test(<name> LINKS <layers...> SOURCES <files...> [LABEL <label>])
# One test program; each TEST in it is a test of ctest.
function(tavlo_test name)
  cmake_parse_arguments(ARG "" "LABEL" "LINKS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest_main)
  if(NOT ARG_LABEL)
    set(ARG_LABEL core)
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES LABELS ${ARG_LABEL} TIMEOUT 120)
endfunction()
