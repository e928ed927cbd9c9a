# The Linux side: Win32 over winhost, and everything that only developers and makers run.
find_package(Threads REQUIRED)
find_package(ZLIB REQUIRED)
find_package(SQLite3 REQUIRED)
find_package(OpenSSL REQUIRED)
find_package(nlohmann_json REQUIRED)
find_package(pugixml REQUIRED)
find_package(CURL REQUIRED)

file(GLOB_RECURSE WINHOST_SOURCES CONFIGURE_DEPENDS winhost/*.cpp)
list(FILTER WINHOST_SOURCES EXCLUDE REGEX "/winhost/(programs|gdi|gdiplus|x11|dialogs)/")
add_library(winhost STATIC ${WINHOST_SOURCES})
target_include_directories(winhost SYSTEM PUBLIC winhost/include)
target_include_directories(winhost PRIVATE ${CMAKE_SOURCE_DIR})
target_link_libraries(winhost PRIVATE vanta_warnings
  PUBLIC nlohmann_json::nlohmann_json SQLite::SQLite3 OpenSSL::SSL OpenSSL::Crypto CURL::libcurl
  pugixml::pugixml ZLIB::ZLIB Threads::Threads ${CMAKE_DL_LIBS})

target_link_libraries(setup_core PUBLIC winhost ZLIB::ZLIB)

# Drawing: apart from the rest, since only what draws links Cairo and Pango.
find_package(PkgConfig REQUIRED)
file(GLOB_RECURSE WINHOST_GRAPHICS_SOURCES CONFIGURE_DEPENDS winhost/gdi/*.cpp winhost/gdiplus/*.cpp
  winhost/x11/*.cpp winhost/dialogs/*.cpp)
if(WINHOST_GRAPHICS_SOURCES)
  pkg_check_modules(CAIRO REQUIRED IMPORTED_TARGET cairo pangocairo fontconfig gdk-pixbuf-2.0)
  pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-shape xcb-icccm xcb-keysyms)
  add_library(winhost_graphics STATIC ${WINHOST_GRAPHICS_SOURCES})
  target_include_directories(winhost_graphics PRIVATE ${CMAKE_SOURCE_DIR})
  target_link_libraries(winhost_graphics PRIVATE vanta_warnings PkgConfig::CAIRO PkgConfig::XCB PUBLIC winhost)
endif()
if(TARGET lumo AND TARGET winhost_graphics)
  target_link_libraries(lumo PUBLIC winhost_graphics)
endif()

# For developer-side code (tools, tests, benchmarks), which may look at winhost's inside.
add_library(vanta_inside INTERFACE)
target_include_directories(vanta_inside INTERFACE ${CMAKE_SOURCE_DIR})
target_link_libraries(vanta_inside INTERFACE setup_core winhost vanta_warnings)

enable_testing()
foreach(part IN ITEMS winhost/programs src/app tools/vantakit payload tests tests/seam tests/windows tests/pictures tests/fuzz tests/bench)
  if(EXISTS ${CMAKE_SOURCE_DIR}/${part}/CMakeLists.txt)
    add_subdirectory(${part})
  endif()
endforeach()
