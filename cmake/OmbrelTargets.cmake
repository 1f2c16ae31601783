# Helpers that give every Ombrel target the same language level, warnings and test wiring.

function(ombrel_common_props target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
    # clang's -Wconversion also takes in -Wsign-conversion (every int index of a std::array); GCC's, which
    # the code is kept clean against, does not. This keeps the same warnings on both compilers.
    target_compile_options(${target} PRIVATE -Wno-sign-conversion)
  endif()
  if(OMBREL_WERROR)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# ombrel_library(NAME <folder> SOURCES ... [LIBS ...])
# One static library per src folder, named ombrel_<folder>.
function(ombrel_library)
  cmake_parse_arguments(ARG "" "NAME" "SOURCES;LIBS" ${ARGN})
  add_library(ombrel_${ARG_NAME} STATIC ${ARG_SOURCES})
  target_include_directories(ombrel_${ARG_NAME} PUBLIC ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(ombrel_${ARG_NAME} PUBLIC ${ARG_LIBS})
  ombrel_common_props(ombrel_${ARG_NAME})
endfunction()

# The built demo emulator (tools/demoemu), which tests copy where a cabinet expects its emulator.
set(OMBREL_DEMOEMU_PATH "$<TARGET_FILE:demoemu>")

set(OMBREL_TEST_ENV
  "SDL_VIDEODRIVER=dummy;SDL_AUDIODRIVER=dummy;FONTCONFIG_FILE=${PROJECT_SOURCE_DIR}/tests/support/fonts.conf;OMBREL_SOURCE_DIR=${PROJECT_SOURCE_DIR};DEMOEMU=${OMBREL_DEMOEMU_PATH}")

# ombrel_test(NAME <exe> SOURCES ... LIBS ... [LABELS ...])
function(ombrel_test)
  cmake_parse_arguments(ARG "" "NAME" "SOURCES;LIBS;LABELS" ${ARGN})
  if(NOT ARG_LABELS)
    set(ARG_LABELS unit)
  endif()
  add_executable(${ARG_NAME} ${ARG_SOURCES})
  target_link_libraries(${ARG_NAME} PRIVATE ${ARG_LIBS} ombrel_test_support GTest::gtest_main GTest::gmock)
  ombrel_common_props(${ARG_NAME})
  # NOTE: gtest_discover_tests flattens list-valued PROPERTIES, so an ENVIRONMENT list would swallow the
  # properties after it; the test environment is set by running each test (and its discovery) under env.
  set_target_properties(${ARG_NAME} PROPERTIES CROSSCOMPILING_EMULATOR "env;${OMBREL_TEST_ENV}")
  gtest_discover_tests(${ARG_NAME}
    DISCOVERY_MODE PRE_TEST
    WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}
    PROPERTIES TIMEOUT 120 LABELS "${ARG_LABELS}")
endfunction()
