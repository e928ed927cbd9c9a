# The shipped executables.
include(cmake/delayed_imports.cmake)
delayed_imports(version psapi wininet winmm wintrust crypt32 imm32 gdiplus msimg32)

find_library(MINGW_ZLIB libz.a REQUIRED)  # by file name: "z" finds the import library of zlib1.dll
find_path(MINGW_ZLIB_INCLUDE zlib.h REQUIRED)

add_compile_options(-fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections -fdata-sections
  -fno-asynchronous-unwind-tables)
target_compile_options(setup_core PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections
  -fdata-sections -fno-asynchronous-unwind-tables)
target_compile_definitions(setup_core PUBLIC _WIN32_WINNT=0x0A00 STRSAFE_NO_DEPRECATE)
target_include_directories(setup_core SYSTEM PUBLIC ${MINGW_ZLIB_INCLUDE})
target_link_libraries(setup_core PUBLIC ${MINGW_ZLIB}
  shlwapi shell32 ole32 oleaut32 uuid taskschd mstask advapi32 comctl32 user32 gdi32
  delayed_version delayed_psapi delayed_wininet delayed_winmm delayed_wintrust delayed_crypt32 delayed_imm32)

if(TARGET lumo)
  target_compile_options(lumo PRIVATE -fno-exceptions -fno-rtti -fno-threadsafe-statics -ffunction-sections
    -fdata-sections -fno-asynchronous-unwind-tables)
  target_link_libraries(lumo PUBLIC delayed_gdiplus delayed_msimg32)
endif()

foreach(part IN ITEMS src/app payload tests/seam)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${part}/CMakeLists.txt)
    add_subdirectory(${part})
  endif()
endforeach()
