# How every target of this project is compiled.
#
#   kelp_compile_options(<target>)  language level, floating-point rules, warnings, sanitizers,
#                                  counters, hardening where the build is optimised
#   kelp_plain_c(<target>)  a test's C that is loaded into a program or stands in for one
#   kelp_compile_quickly(<target>)  what need not be fast, and is long in compiling
#   kelp_vectors(<source>...)  of this folder: kernels, compiled once for each kind of vectors
#   kelp_large_vectors(<source>...)  such kernels that are long in compiling

option(KELP_WARNINGS_AS_ERRORS "Treat warnings as errors" OFF)
set(KELP_SANITIZE "" CACHE STRING "Sanitizers to compile and link with, as -fsanitize= takes them")
option(KELP_COVERAGE "Count which lines of the product run" OFF)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# What the programs read comes from strangers: whatever a fault would let in, the compiler and the
# linker make hard to use.
option(KELP_HARDEN "Harden the programs" ON)

include(CheckCXXCompilerFlag)
set(kelp_hardening -fPIE -fstack-protector-strong -Wformat -Werror=format-security)
# Not every processor has them; Clang only warns of one that it has not.
set(CMAKE_REQUIRED_FLAGS -Werror)
foreach(flag IN ITEMS -fcf-protection -mbranch-protection=standard)
  string(MAKE_C_IDENTIFIER "KELP_HAS${flag}" known)
  check_cxx_compiler_flag(${flag} ${known})
  if(${known})
    list(APPEND kelp_hardening ${flag})
  endif()
endforeach()
unset(CMAKE_REQUIRED_FLAGS)
# Packagers bring a level of their own. The C library warns of it without optimisation.
if(NOT "${CMAKE_CXX_FLAGS}" MATCHES "_FORTIFY_SOURCE")
  list(APPEND kelp_hardening
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE>
    $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-D_FORTIFY_SOURCE=2>)
endif()

function(kelp_harden target)
  target_compile_options(${target} PRIVATE ${kelp_hardening})
  get_target_property(type ${target} TYPE)
  if(type STREQUAL "EXECUTABLE")
    target_link_options(${target} PRIVATE
      -pie -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  endif()
endfunction()

function(kelp_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(KELP_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

function(kelp_compile_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF)
  target_include_directories(${target} PUBLIC "${PROJECT_SOURCE_DIR}")
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    # Without it files of 2 GB and more, and all files on a file system with 64-bit inode numbers,
    # count as files that cannot be opened.
    target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64)
  endif()
  # A fused multiply-add rounds once where two operations round twice: it would
  # change single dots between compilers and processors.
  target_compile_options(${target} PRIVATE -ffp-contract=off)
  kelp_warnings(${target})
  if(KELP_COVERAGE)
    string(FIND "${CMAKE_CURRENT_SOURCE_DIR}/" "${PROJECT_SOURCE_DIR}/tests/" in_tests)
    if(NOT in_tests EQUAL 0)
      target_compile_options(${target} PRIVATE --coverage -O0)
    endif()
    target_link_options(${target} PUBLIC --coverage)
  endif()
  if(KELP_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${KELP_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${KELP_SANITIZE})
  elseif(KELP_HARDEN AND NOT KELP_COVERAGE)
    kelp_harden(${target})
  endif()
  if(KELP_BUILD_FUZZERS AND NOT target MATCHES "^kelp_(reference|test)")
    # What the code under test does guides a fuzzer, not what the code that judges it does.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# It must not bring a sanitizer runtime of its own: the project's warnings, none of its other options.
function(kelp_plain_c target)
  set_target_properties(${target} PROPERTIES C_STANDARD 17 C_EXTENSIONS ON)
  kelp_warnings(${target})
endfunction()

# For files full of another library's templates that run once a process, such as those that declare
# options. GCC's analyzer would take minutes and gigabytes for each.
set(kelp_quick_options -O1 -g1)
if("${CMAKE_CXX_FLAGS}" MATCHES "-fanalyzer")
  list(APPEND kelp_quick_options -fno-analyzer)
endif()

function(kelp_compile_quickly target)
  target_compile_options(${target} PRIVATE ${kelp_quick_options})
endfunction()

# Such a file includes itself, which works in no file but its own. What a debugger could tell of its
# many inlined operations takes the compiler longer than the rest.
function(kelp_vectors)
  set_source_files_properties(${ARGN} PROPERTIES
    SKIP_UNITY_BUILD_INCLUSION ON COMPILE_OPTIONS "$<$<CONFIG:RelWithDebInfo>:-g1>")
endfunction()

# A check of each pointer and reference in thousands of inlined vector operations takes compilers
# minutes; the address sanitizer still sees what they touch.
function(kelp_large_vectors)
  kelp_vectors(${ARGN})
  if(KELP_SANITIZE MATCHES "undefined")
    set(unchecked null,alignment,object-size,pointer-overflow,vptr)
    set_property(SOURCE ${ARGN} APPEND PROPERTY COMPILE_OPTIONS -O1 -fno-sanitize=${unchecked})
  endif()
endfunction()
