# One Linux program stands behind all four, and one library behind both DLLs; each is wrapped with a version of its own
# and signed.
add_executable(payload_program programs/program.cpp)
target_link_libraries(payload_program PRIVATE winhost_main winhost vanta_warnings)
target_compile_definitions(payload_program PRIVATE UNICODE _UNICODE NOMINMAX)

# Finds the Win32 functions in the program that loads it, so that there is one machine and one table of modules in the
# process.
add_library(payload_shell_extension MODULE programs/shell_extension.cpp)
target_link_libraries(payload_shell_extension PRIVATE vanta_warnings)
target_include_directories(payload_shell_extension SYSTEM PRIVATE ${CMAKE_SOURCE_DIR}/winhost/include)
target_compile_definitions(payload_shell_extension PRIVATE UNICODE _UNICODE NOMINMAX)
if(CMAKE_BUILD_TYPE STREQUAL "Release")
  target_link_options(payload_program PRIVATE -s)
  target_link_options(payload_shell_extension PRIVATE -s)
endif()

function(wrap row target)
  string(REPLACE "|" ";" row "${row}")
  list(GET row 0 file)
  list(GET row 1 description)
  add_custom_command(OUTPUT ${images}/${file}
    COMMAND vantakit wrap --elf $<TARGET_FILE:${target}> --version ${PROJECT_VERSION} --description ${description}
      --icon ${CMAKE_BINARY_DIR}/src/app/setup.ico --sign-key ${VANTA_DEV_KEY} --sign-cert ${VANTA_DEV_CERT}
      --out ${images}/${file} ${ARGN}
    DEPENDS ${target} vantakit setup_icon ${CMAKE_BINARY_DIR}/src/app/setup.ico ${VANTA_DEV_CERT} VERBATIM)
endfunction()

foreach(row IN LISTS programs)
  wrap("${row}" payload_program)
endforeach()
list(GET libraries 0 row)
wrap("${row}" payload_shell_extension --dll)
list(GET libraries 1 row)
wrap("${row}" payload_shell_extension --dll --x64)
foreach(row IN LISTS programs libraries)
  string(REGEX REPLACE "\\|.*" "" file "${row}")
  list(APPEND image_files ${images}/${file})
endforeach()
