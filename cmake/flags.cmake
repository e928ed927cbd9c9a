# Warnings are errors on every compiler; sanitizer builds are -O0 -g1, which compiles in half the time of -O1.
add_library(vanta_warnings INTERFACE)
target_compile_options(vanta_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Werror
  "$<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor;-Woverloaded-virtual;-Wnarrowing>")

if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # GCC 12 sees overlapping copies in its own inlined std::string (its bug 105329).
  target_compile_options(vanta_warnings INTERFACE -Wno-restrict)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

if(VANTA_SANITIZE)
  add_compile_options(-fsanitize=${VANTA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer -O0 -g1)
  add_link_options(-fsanitize=${VANTA_SANITIZE})
elseif(CMAKE_BUILD_TYPE STREQUAL "Debug")
  add_compile_options(-g1)
endif()
