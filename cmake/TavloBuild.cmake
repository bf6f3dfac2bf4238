# Compiler settings and the few functions that the CMakeLists of the layers are written with.

include(CheckLinkerFlag)

# A launcher of the builder's own stays, and an empty one leaves the cache out.
find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT DEFINED CMAKE_CXX_COMPILER_LAUNCHER)
  # Precompiled headers are only kept with these allowances; no code here asks for the time of its build.
  set(ccache_settings CCACHE_DEPEND=1 CCACHE_SLOPPINESS=pch_defines,time_macros)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" OR NOT TAVLO_PRECOMPILE)
    # What one clone has built serves the next. The headers that clang precompiles hold the path of their folder.
    list(APPEND ccache_settings CCACHE_BASEDIR=${CMAKE_SOURCE_DIR} CCACHE_NOHASHDIR=1)
  endif()
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env ${ccache_settings} ${CCACHE_PROGRAM})
  if(TAVLO_PRECOMPILE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
  elseif(TAVLO_PRECOMPILE AND CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  endif()
endif()

find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM)
  check_linker_flag(CXX -fuse-ld=mold TAVLO_LINKS_WITH_MOLD)
  if(TAVLO_LINKS_WITH_MOLD)
    add_link_options(-fuse-ld=mold)
  endif()
endif()

# The presets make errors of them; another compiler, or another setting of this one, may warn of what is right.
if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # They raise false alarms inside its own std::string; the sanitizers look for the real thing.
  add_compile_options(-Wno-array-bounds -Wno-restrict -Wno-stringop-overflow -Wno-stringop-overread)
endif()
if(TAVLO_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # An optional without a value and an index behind the end of an array that goes on are no fault of memory.
  add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

if(TAVLO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# tavlo_headers(<name> LINKS <libraries...> HEADERS <headers...> [TESTS])
# Headers of libraries that many files of a kind include, read once for all of them: most of a build is reading
# these. A file still includes what it uses; clang-tidy reads it without them.
function(tavlo_headers name)
  cmake_parse_arguments(ARG "TESTS" "" "LINKS;HEADERS" ${ARGN})
  if(NOT TAVLO_PRECOMPILE)
    return()
  endif()
  set(empty ${CMAKE_BINARY_DIR}/headers_${name}.cpp)
  file(CONFIGURE OUTPUT ${empty} CONTENT "")
  add_library(tavlo_headers_${name} OBJECT EXCLUDE_FROM_ALL ${empty})
  target_link_libraries(tavlo_headers_${name} PRIVATE ${ARG_LINKS})
  target_precompile_headers(tavlo_headers_${name} PRIVATE ${ARG_HEADERS})
  if(ARG_TESTS)
    target_compile_options(tavlo_headers_${name} PRIVATE ${TAVLO_TEST_OPTIONS})
  elseif(TAVLO_JOIN_FILES)
    set_target_properties(tavlo_headers_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  endif()
endfunction()

# tavlo_reads(<target> <name>)
# The target's files begin with the headers of that name.
function(tavlo_reads target name)
  if(TAVLO_PRECOMPILE)
    target_precompile_headers(${target} REUSE_FROM tavlo_headers_${name})
  endif()
endfunction()

# tavlo_joins(<target> [<name>])
# The target's files are compiled several at a time, if that is asked for, and begin with the headers of that name.
function(tavlo_joins target)
  if(TAVLO_JOIN_FILES)
    set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 16)
  endif()
  if(ARGC GREATER 1)
    tavlo_reads(${target} ${ARGV1})
  endif()
endfunction()

# tavlo_layer(<name> LINKS <layers...> SOURCES <files...> [HEADERS <name>])
# One folder of src/ as a static library tavlo_<name>. LINKS is its permission: what it may include.
function(tavlo_layer name)
  cmake_parse_arguments(ARG "" "HEADERS" "LINKS;SOURCES" ${ARGN})
  add_library(tavlo_${name} STATIC ${ARG_SOURCES})
  target_include_directories(tavlo_${name} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(tavlo_${name} PUBLIC ${ARG_LINKS})
  if(NOT ARG_HEADERS)
    set(ARG_HEADERS standard)
  endif()
  tavlo_joins(tavlo_${name} ${ARG_HEADERS})
  # A module that needs one file of a layer then gets its neighbours too, and must be able to load them.
  if(TAVLO_JOIN_FILES)
    set_target_properties(tavlo_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
  endif()
endfunction()

# Below the folder that the programs are in: what they load when they need it.
set(TAVLO_MODULE_FOLDER lib/tavlo-composer)

# tavlo_finds_modules(<program>)
# The program loads the modules of this tree, and of where it is installed.
function(tavlo_finds_modules name)
  set_target_properties(${name} PROPERTIES
    BUILD_RPATH "$ORIGIN/../${TAVLO_MODULE_FOLDER}"
    INSTALL_RPATH "$ORIGIN/../${TAVLO_MODULE_FOLDER}")
  add_dependencies(${name} tavlo-paper)
endfunction()

# tavlo_test(<name> LINKS <layers...> SOURCES <files...> [LABEL <label>] [HEADERS <name>] [OPTIMISED])
# One test program; each TEST in it is a test of ctest. OPTIMISED is for one that runs longer than it compiles.
function(tavlo_test name)
  cmake_parse_arguments(ARG "OPTIMISED" "LABEL;HEADERS" "LINKS;SOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest_main)
  if(ARG_OPTIMISED)
    tavlo_joins(${name})
  else()
    target_compile_options(${name} PRIVATE ${TAVLO_TEST_OPTIONS})
    if(NOT ARG_HEADERS)
      set(ARG_HEADERS tests)
    endif()
    tavlo_joins(${name} ${ARG_HEADERS})
  endif()
  if(NOT ARG_LABEL)
    set(ARG_LABEL core)
  endif()
  if(ARG_LABEL STREQUAL "core" AND TAVLO_CORE_TESTS_BY_NAME)
    set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
  # What runs long begins first. The limit is for a test that hangs; on a busy machine a sweep takes three times as long.
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST PROPERTIES
    LABELS ${ARG_LABEL} COST $<BOOL:${ARG_OPTIMISED}> TIMEOUT 600)
endfunction()
