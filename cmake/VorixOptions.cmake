# Compiler flags shared by every Vorix target, gathered in one interface library.
#
# Deterministic output is part of the product: no -ffast-math, no -march=native, and no
# floating-point contraction into FMA, so every build of the same source gives the same bits.

add_library(vorix_options INTERFACE)
target_compile_options(vorix_options INTERFACE
  -Wall -Wextra -Wpedantic
  -ffp-contract=off
  $<$<BOOL:${VORIX_WERROR}>:-Werror>)
target_include_directories(vorix_options INTERFACE ${PROJECT_SOURCE_DIR}/src)

if(VORIX_SANITIZE)
  list(JOIN VORIX_SANITIZE "," _vorix_sanitizers)
  target_compile_options(vorix_options INTERFACE
    -fsanitize=${_vorix_sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer -g)
  target_link_options(vorix_options INTERFACE -fsanitize=${_vorix_sanitizers})
endif()

# Every library of a fuzzing build carries the coverage hooks that guide libFuzzer.
if(VORIX_BUILD_FUZZ)
  target_compile_options(vorix_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# Declares one subsystem library: vorix_add_library(engine SOURCES ... DEPENDS ...).
function(vorix_add_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_library(vorix_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(vorix_${name} PUBLIC vorix_options ${ARG_DEPENDS})
  set_target_properties(vorix_${name} PROPERTIES POSITION_INDEPENDENT_CODE ON)
endfunction()
