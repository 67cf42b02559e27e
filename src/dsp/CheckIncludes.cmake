cmake_minimum_required(VERSION 3.25)
# Fails when a file of the dsp layer includes anything but its own headers, the C++ standard
# library and the compiler's vector intrinsics: the audio thread's code must not reach the
# engine object, the framework, the core or a platform.
file(GLOB files ${DSP_DIR}/*.h ${DSP_DIR}/*.cpp)
set(allowed_system
  algorithm array atomic bit cmath complex cstddef cstdint cstdlib cstring functional
  emmintrin.h immintrin.h limits map memory new numbers span string type_traits utility vector)
set(failures "")
foreach(file ${files})
  file(STRINGS ${file} lines REGEX "^[ \t]*#[ \t]*include")
  foreach(line ${lines})
    if(line MATCHES "#[ \t]*include[ \t]*\"([^\"]+)\"")
      set(header ${CMAKE_MATCH_1})
      if(NOT header MATCHES "^dsp/")
        list(APPEND failures "${file}: ${header}")
      endif()
    elseif(line MATCHES "#[ \t]*include[ \t]*<([^>]+)>")
      set(header ${CMAKE_MATCH_1})
      if(NOT header IN_LIST allowed_system)
        list(APPEND failures "${file}: <${header}>")
      endif()
    endif()
  endforeach()
endforeach()
if(failures)
  list(JOIN failures "\n  " text)
  message(FATAL_ERROR "the dsp layer includes what it must not:\n  ${text}")
endif()
