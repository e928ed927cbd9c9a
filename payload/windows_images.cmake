# Programs are of this build's kind. Both libraries are always made, each by the compiler of its kind: the setup installs
# the two and registers the one that fits the desktop. `vantakit pack` signs them.
string(REPLACE "." "," IMAGE_VERSION_COMMAS ${PROJECT_VERSION})

function(version_script row type icon)
  string(REPLACE "|" ";" row "${row}")
  list(GET row 0 IMAGE_FILE)
  list(GET row 1 IMAGE_DESCRIPTION)
  set(IMAGE_TYPE ${type})
  set(IMAGE_ICON "${icon}")
  configure_file(programs/image.rc.in ${IMAGE_FILE}.rc @ONLY)
  set(file ${IMAGE_FILE} PARENT_SCOPE)
endfunction()

set(setup_icon ${CMAKE_BINARY_DIR}/src/app/setup.ico)
foreach(row IN LISTS programs)
  version_script("${row}" VFT_APP "1 ICON \"${setup_icon}\"")
  set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${file}.rc PROPERTIES OBJECT_DEPENDS ${setup_icon})
  string(REPLACE ".exe" "" name ${file})
  add_executable(payload_${name} WIN32 programs/program.cpp ${CMAKE_CURRENT_BINARY_DIR}/${file}.rc)
  target_compile_definitions(payload_${name} PRIVATE UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN)
  target_link_libraries(payload_${name} PRIVATE vanta_warnings)
  target_link_options(payload_${name} PRIVATE -municode -static -s LINKER:--gc-sections,--no-insert-timestamp)
  set_target_properties(payload_${name} PROPERTIES OUTPUT_NAME ${name} SUFFIX .exe RUNTIME_OUTPUT_DIRECTORY ${images})
  add_dependencies(payload_${name} setup_icon)
  list(APPEND image_files ${images}/${file} payload_${name})
endforeach()

function(shell_extension row machine)
  version_script("${row}" VFT_DLL "")
  set(source ${CMAKE_CURRENT_SOURCE_DIR}/programs/shell_extension.cpp)
  set(object ${CMAKE_CURRENT_BINARY_DIR}/${file}.res.o)
  add_custom_command(OUTPUT ${images}/${file}
    COMMAND ${machine}-windres ${CMAKE_CURRENT_BINARY_DIR}/${file}.rc ${object}
    COMMAND ${machine}-g++-win32 -std=c++20 -Os -s -shared -static -Wall -Wextra -Wconversion -Wno-sign-conversion -Werror
      -DUNICODE -D_UNICODE -DNOMINMAX -DWIN32_LEAN_AND_MEAN -fno-exceptions -fno-rtti -ffunction-sections
      -Wl,--gc-sections,--no-insert-timestamp,--kill-at -o ${images}/${file} ${source} ${object} -lshlwapi
    DEPENDS ${source} ${CMAKE_CURRENT_BINARY_DIR}/${file}.rc VERBATIM)
  set(image_files ${image_files} ${images}/${file} PARENT_SCOPE)
endfunction()

list(GET libraries 0 row)
shell_extension("${row}" i686-w64-mingw32)
list(GET libraries 1 row)
shell_extension("${row}" x86_64-w64-mingw32)
