# Libraries of Windows that are not among those it always takes from its own folder (the "known DLLs"). Imported in the
# usual way they would be searched beside the setup before its first line runs, which is where a browser puts downloads.
# So each is loaded when one of its functions is first called: src/app/library_search.cpp sees to it that it then comes
# from the system folder. `make lint` compares the two lists.
#
# delayed_imports(NAME …) makes for each library a target delayed_NAME to link with. The import library is made of the
# names that the compiler's own one has.
function(delayed_imports)
  foreach(name IN LISTS ARGN)
    find_library(MINGW_LIBRARY_${name} lib${name}.a REQUIRED)
    execute_process(COMMAND ${CMAKE_DLLTOOL} --identify ${MINGW_LIBRARY_${name}}
      OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${CMAKE_NM} ${MINGW_LIBRARY_${name}}
      OUTPUT_VARIABLE symbols ERROR_QUIET COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL " T [^\n]+" functions "${symbols}")
    list(TRANSFORM functions REPLACE "^ T " "")
    if(CMAKE_SIZEOF_VOID_P EQUAL 4)  # C names have a "_" ahead there
      list(TRANSFORM functions REPLACE "^_" "")
    endif()
    list(JOIN functions "\n" exports)
    set(base ${CMAKE_BINARY_DIR}/delayed_${name})
    file(CONFIGURE OUTPUT ${base}.def CONTENT "LIBRARY ${dll}\nEXPORTS\n${exports}\n" @ONLY)
    if(NOT EXISTS ${base}.a OR ${base}.def IS_NEWER_THAN ${base}.a)
      execute_process(COMMAND ${CMAKE_DLLTOOL} --kill-at --input-def ${base}.def --output-delaylib ${base}.a
        COMMAND_ERROR_IS_FATAL ANY)
    endif()
    add_library(delayed_${name} INTERFACE)
    target_link_libraries(delayed_${name} INTERFACE ${base}.a delayimp)
  endforeach()
endfunction()
