# The shipped executables.
find_library(MINGW_ZLIB libz.a REQUIRED)  # by file name: "z" finds the import library of zlib1.dll
find_path(MINGW_ZLIB_INCLUDE zlib.h REQUIRED)

add_compile_options(-fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections -fdata-sections
  -fno-asynchronous-unwind-tables)
target_compile_options(setup_core PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections
  -fdata-sections -fno-asynchronous-unwind-tables)
target_compile_definitions(setup_core PUBLIC _WIN32_WINNT=0x0A00 STRSAFE_NO_DEPRECATE)
target_include_directories(setup_core SYSTEM PUBLIC ${MINGW_ZLIB_INCLUDE})
target_link_libraries(setup_core PUBLIC ${MINGW_ZLIB}
  shlwapi shell32 ole32 oleaut32 uuid taskschd mstask advapi32 version psapi wintrust crypt32 comctl32 imm32 user32 gdi32)

foreach(part IN ITEMS src/app payload tests/seam)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${part}/CMakeLists.txt)
    add_subdirectory(${part})
  endif()
endforeach()
