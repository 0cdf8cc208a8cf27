# What every target of the project is compiled with, as one interface target.
add_library(veldtrim_options INTERFACE)
target_compile_features(veldtrim_options INTERFACE cxx_std_20)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # The point test promises one verdict on every compiler and processor: no fused multiply-add.
  target_compile_options(veldtrim_options INTERFACE -ffp-contract=off)
  target_compile_options(veldtrim_options INTERFACE -Wall -Wextra -Wconversion -Wshadow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 warns of impossible sizes inside std::string's operator+ (GCC bug 105651).
    target_compile_options(veldtrim_options INTERFACE -Wno-restrict)
  endif()
  if(VELDTRIM_WARNINGS_AS_ERRORS)
    target_compile_options(veldtrim_options INTERFACE -Werror)
  endif()
  if(VELDTRIM_SANITIZE)
    target_compile_options(veldtrim_options INTERFACE
      -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(veldtrim_options INTERFACE -fsanitize=address,undefined)
  endif()
  if(VELDTRIM_FUZZ AND VELDTRIM_SANITIZE AND CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # What leads a fuzzer to new paths; the sanitizers' runtime has what it calls.
    target_compile_options(veldtrim_options INTERFACE -fsanitize=fuzzer-no-link)
  endif()
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VELDTRIM_SANITIZE)
    # Optimised programs end with a signal where memory would be overwritten, and write-protect
    # their tables of functions. That they are position-independent is the compilers' default.
    target_compile_options(veldtrim_options INTERFACE
      "$<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
    target_link_options(veldtrim_options INTERFACE
      "$<$<CONFIG:Release,RelWithDebInfo>:-Wl,-z,relro,-z,now>")
  endif()
endif()
if(WIN32)
  target_compile_definitions(veldtrim_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()
