# One object library a room. Its headers are included as "room/header.h" through a folder of its own in the
# build tree, so that a room can include only what stands on its include path: the rooms below it.

set(ROOMS_DIR ${CMAKE_BINARY_DIR}/rooms)

# GCC 12 drops the rounding into 32 bits of two neighbouring doubles that are read back as doubles at once, when it makes
# one vector of them (-ftree-slp-vectorize, part of -O2): tests/core/basic_types_test.cpp has the case.
add_library(lobemax_options INTERFACE)
# No contraction of a * b + c and no fast-math: a result is what its formula says, on every machine.
# GCC 12 reports std::string assignments as overlapping copies at -O3; -Wrestrict, which Clang lacks, is off for that.
target_compile_options(lobemax_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Werror
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  $<$<CXX_COMPILER_ID:GNU>:-fno-tree-slp-vectorize -fno-semantic-interposition>
  -ffp-contract=off)
if(LOBEMAX_HARDEN)
  # Told explicitly, whatever the distribution's compiler does by itself. _FORTIFY_SOURCE has its checks from -O1 on.
  include(CheckPIESupported)
  check_pie_supported()
  set(CMAKE_POSITION_INDEPENDENT_CODE ON)
  target_compile_options(lobemax_options INTERFACE
    -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS -fstack-protector-strong -fcf-protection=full)
  target_link_options(lobemax_options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
endif()
if(LOBEMAX_SANITIZE)
  target_compile_options(lobemax_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(lobemax_options INTERFACE -fsanitize=address,undefined)
endif()
if(LOBEMAX_FUZZ)
  # Assertions of the library too, as each index of a standard container is then one.
  target_compile_options(lobemax_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -D_GLIBCXX_ASSERTIONS)
  target_link_options(lobemax_options INTERFACE -fsanitize=address,undefined)
endif()
if(LOBEMAX_SANITIZE_THREAD)
  target_compile_options(lobemax_options INTERFACE -fsanitize=thread -fno-omit-frame-pointer)
  target_link_options(lobemax_options INTERFACE -fsanitize=thread)
endif()

function(link_room_headers name)
  file(MAKE_DIRECTORY ${ROOMS_DIR}/${name})
  if(NOT EXISTS ${ROOMS_DIR}/${name}/${name})
    file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${name} ${ROOMS_DIR}/${name}/${name} SYMBOLIC)
  endif()
endfunction()

# Loops over rows, *_lanes.cpp, are compiled once for each width that an x86-64 processor may have (core/lanes.h): 1 is
# the reference, 2 SSE2, 4 AVX2, 8 AVX-512. Each width is a source of its own in the build tree.
set(LANE_OPTIONS_1 "")
set(LANE_OPTIONS_2 "")
set(LANE_OPTIONS_4 -mavx2)
set(LANE_OPTIONS_8 -mavx512f -mavx512dq -mavx512vl -mprefer-vector-width=512)
set(LANE_WIDTHS 1)
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
  set(LANE_WIDTHS 1 2 4 8)
endif()

# lane_sources(variable files...): the sources that stand for them.
function(lane_sources variable)
  set(sources "")
  foreach(file ${ARGN})
    cmake_path(GET file STEM stem)
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(GET folder FILENAME room)
    foreach(width ${LANE_WIDTHS})
      set(source ${CMAKE_BINARY_DIR}/lanes/${room}/${stem}_${width}.cpp)
      file(CONFIGURE OUTPUT ${source} CONTENT "#define LOBEMAX_LANES ${width}\n#include \"${file}\"\n")
      # Arguments of 64 bytes go by registers within one file alone: what compilers warn of does not arise.
      set_source_files_properties(${source} PROPERTIES
        COMPILE_OPTIONS "${LANE_OPTIONS_${width}};-Wno-psabi" SKIP_PRECOMPILE_HEADERS ON)
      list(APPEND sources ${source})
    endforeach()
  endforeach()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# add_room(name [rooms below...])
function(add_room name)
  link_room_headers(${name})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${name}/*.cpp)
  set(lane_files ${sources})
  list(FILTER lane_files INCLUDE REGEX "_lanes\\.cpp$")
  list(FILTER sources EXCLUDE REGEX "_lanes\\.cpp$")
  lane_sources(of_widths ${lane_files})
  list(APPEND sources ${of_widths})
  add_library(room_${name} OBJECT ${sources})
  target_link_libraries(room_${name} PUBLIC lobemax_options)
  if(LOBEMAX_FUZZ)  # what the fuzzer steers by: the branches of the rooms, not those of Qt or of the tests
    target_compile_options(room_${name} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  target_include_directories(room_${name} PRIVATE ${ROOMS_DIR}/${name})
  foreach(below ${ARGN})
    target_include_directories(room_${name} PRIVATE ${ROOMS_DIR}/${below})
  endforeach()
endfunction()

link_room_headers(cli)
