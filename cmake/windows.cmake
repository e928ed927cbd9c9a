# The shipped executables.
include(cmake/delayed_imports.cmake)
delayed_imports(version psapi wininet winmm wintrust crypt32 imm32 gdiplus msimg32)

find_library(MINGW_ZLIB libz.a REQUIRED)  # by file name: "z" finds the import library of zlib1.dll
find_path(MINGW_ZLIB_INCLUDE zlib.h REQUIRED)

# Copies that the compiler makes of a template's functions in every file (ipa-sra, ipa-cp, and the common body of a
# constructor's variants) are not merged by the linker.
set(small_code -fno-exceptions -fno-ipa-sra -fno-ipa-cp -ffunction-sections -fdata-sections -fno-asynchronous-unwind-tables
  $<$<COMPILE_LANGUAGE:CXX>:-fno-rtti> $<$<COMPILE_LANGUAGE:CXX>:-fno-threadsafe-statics>
  $<$<COMPILE_LANGUAGE:CXX>:-fno-declone-ctor-dtor>)
add_compile_options(${small_code})
target_compile_options(setup_core PRIVATE ${small_code})
target_compile_definitions(setup_core PUBLIC _WIN32_WINNT=0x0A00 STRSAFE_NO_DEPRECATE)
target_include_directories(setup_core SYSTEM PUBLIC ${MINGW_ZLIB_INCLUDE})
target_link_libraries(setup_core PUBLIC ${MINGW_ZLIB}
  shlwapi shell32 ole32 oleaut32 uuid taskschd mstask advapi32 comctl32 user32 gdi32
  delayed_version delayed_psapi delayed_wininet delayed_winmm delayed_wintrust delayed_crypt32 delayed_imm32)

if(TARGET lumo)
  target_compile_options(lumo PRIVATE ${small_code})
  target_link_libraries(lumo PUBLIC delayed_gdiplus delayed_msimg32)
endif()

foreach(part IN ITEMS src/app payload tests/seam tests/windows)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${part}/CMakeLists.txt)
    add_subdirectory(${part})
  endif()
endforeach()
