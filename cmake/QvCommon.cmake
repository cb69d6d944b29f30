# Shared compile settings and helpers for every target of the project.

add_compile_options(-Wall -Wextra)
# Qt's strings are UTF-16; keep literal Chinese text exact.
add_compile_definitions(QT_NO_KEYWORDS)

if(QV_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
  add_link_options(-fsanitize=address,undefined)
endif()

# qv_add_gtest(<name> SOURCES ... LIBS ... [GUI] [PGSERVER])
# One test executable per unit. GUI tests get a QApplication on the offscreen
# platform; the others a QCoreApplication. PGSERVER: under ctest the tests use the
# PostgreSQL server that the fixture tests start once for the run.
# The folder of the PostgreSQL server one ctest run shares (short: it holds the
# server's socket).
string(MD5 QV_PG_DIR_HASH "${CMAKE_BINARY_DIR}")
string(SUBSTRING "${QV_PG_DIR_HASH}" 0 8 QV_PG_DIR_HASH)
set(QV_PG_SHARED_DIR "/tmp/qv-pgtest-${QV_PG_DIR_HASH}")
function(qv_add_gtest name)
  cmake_parse_arguments(ARG "GUI;PGSERVER" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  set(pg_env "")
  set(pg_props "")
  if(ARG_PGSERVER)
    set(pg_env ";QV_PG_SHARED_DIR=${QV_PG_SHARED_DIR}")
    set(pg_props " FIXTURES_REQUIRED pgserver")
  endif()
  if(ARG_GUI)
    target_link_libraries(${name} PRIVATE qv_test_main_gui)
  else()
    target_link_libraries(${name} PRIVATE qv_test_main_core)
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} GTest::gtest GTest::gmock)
  gtest_discover_tests(${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300)
  # The discovery script splits a list-valued property into separate arguments, so
  # only the first variable would arrive: set the environment from a file read
  # after the discovered tests instead.
  set(env_file ${CMAKE_CURRENT_BINARY_DIR}/${name}_env.cmake)
  file(WRITE ${env_file}
    "foreach(t IN LISTS ${name}_TESTS)\n"
    "  set_tests_properties(\"\${t}\" PROPERTIES ENVIRONMENT \"QT_QPA_PLATFORM=offscreen;QV_TEST_ARTIFACTS=${CMAKE_BINARY_DIR}/artifacts;LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp${pg_env}\"${pg_props})\n"
    "endforeach()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${env_file})
endfunction()

# qv_add_bench(<name> SOURCES ... LIBS ...)
function(qv_add_bench name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS} benchmark::benchmark)
endfunction()

# qv_add_fuzz(<name> SOURCES ... LIBS ... CORPUS <dir> [DICT <file>])
# The target defines LLVMFuzzerTestOneInput. With QV_BUILD_FUZZ (clang) it is a
# libFuzzer binary run for a short while as a test; otherwise a replay program that
# feeds every file of the seed corpus through the same entry, so plain builds still
# check that the seeds never crash the reader. DICT: a dictionary of the format's
# keywords for libFuzzer's mutations.
function(qv_add_fuzz name)
  cmake_parse_arguments(ARG "" "CORPUS;DICT" "SOURCES;LIBS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE ${ARG_LIBS})
  if(QV_BUILD_FUZZ)
    target_compile_options(${name} PRIVATE -fsanitize=fuzzer)
    target_link_options(${name} PRIVATE -fsanitize=fuzzer)
    if(QV_BUILD_TESTS)
      set(work ${CMAKE_BINARY_DIR}/fuzz-corpus/${name})
      file(MAKE_DIRECTORY ${work})
      set(dict)
      if(ARG_DICT)
        set(dict -dict=${ARG_DICT})
      endif()
      add_test(NAME ${name}.run
               COMMAND ${name} -max_total_time=20 -rss_limit_mb=2048 -timeout=10 ${dict} ${work} ${ARG_CORPUS})
    endif()
  else()
    target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/fuzz/replay_main.cpp)
    if(QV_BUILD_TESTS)
      add_test(NAME ${name}.replay COMMAND ${name} ${ARG_CORPUS})
    endif()
  endif()
endfunction()

# Adds every sub-folder of the current folder that has a CMakeLists.txt.
function(qv_add_subdirectories)
  file(GLOB dirs LIST_DIRECTORIES true ${CMAKE_CURRENT_SOURCE_DIR}/*)
  foreach(dir ${dirs})
    if(IS_DIRECTORY ${dir} AND EXISTS ${dir}/CMakeLists.txt)
      add_subdirectory(${dir})
    endif()
  endforeach()
endfunction()
