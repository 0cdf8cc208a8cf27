# The compiler and linker options of all targets, as one interface target.
add_library(veldtrim_options INTERFACE)
target_compile_features(veldtrim_options INTERFACE cxx_std_20)

if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
  # Without fused multiply-add, the point test gives the same verdict with every compiler and on
  # every processor.
  target_compile_options(veldtrim_options INTERFACE -ffp-contract=off)
  target_compile_options(veldtrim_options INTERFACE -Wall -Wextra -Wconversion -Wshadow)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # g++ 12 warns about impossible sizes in std::string's operator+ (GCC bug 105651).
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
    # Coverage feedback for the fuzzers. The functions it calls are in the sanitizers' runtime.
    target_compile_options(veldtrim_options INTERFACE -fsanitize=fuzzer-no-link)
  endif()
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VELDTRIM_SANITIZE)
    # Optimised programs stop with a signal instead of overwriting memory, and their function
    # tables are read-only. The compilers make them position-independent by default.
    target_compile_options(veldtrim_options INTERFACE
      "$<$<CONFIG:Release,RelWithDebInfo>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong>")
    target_link_options(veldtrim_options INTERFACE
      "$<$<CONFIG:Release,RelWithDebInfo>:-Wl,-z,relro,-z,now>")
  endif()
endif()
if(WIN32)
  target_compile_definitions(veldtrim_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()
