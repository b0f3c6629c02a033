find_package(PkgConfig REQUIRED)
find_package(Threads REQUIRED)

pkg_check_modules(ICU REQUIRED IMPORTED_TARGET icu-uc icu-i18n)
pkg_check_modules(SYSTEMD REQUIRED IMPORTED_TARGET libsystemd)
pkg_check_modules(UUID REQUIRED IMPORTED_TARGET uuid)
pkg_check_modules(SQLITE REQUIRED IMPORTED_TARGET sqlite3)
pkg_check_modules(PANGOCAIRO REQUIRED IMPORTED_TARGET pangocairo cairo-pdf)
pkg_check_modules(XCB REQUIRED IMPORTED_TARGET xcb xcb-screensaver)
pkg_check_modules(WAYLAND REQUIRED IMPORTED_TARGET wayland-client)

find_package(absl REQUIRED)
find_package(Boost REQUIRED)
find_package(CLI11 REQUIRED)
find_package(fmt REQUIRED)
find_package(OpenSSL REQUIRED COMPONENTS Crypto)
find_package(spdlog REQUIRED)
find_package(SQLiteCpp REQUIRED)
find_package(tomlplusplus REQUIRED)

# An operator of RapidJSON 1.1 assigns to a constant, which clang, and so clang-tidy, refuses though nobody calls
# it. The build takes the headers from a copy without that operator.
find_path(RAPIDJSON_INCLUDE_DIRECTORY rapidjson/document.h REQUIRED)
file(COPY "${RAPIDJSON_INCLUDE_DIRECTORY}/rapidjson" DESTINATION "${CMAKE_BINARY_DIR}/external"
    REGEX "/document\\.h$" EXCLUDE)
file(READ "${RAPIDJSON_INCLUDE_DIRECTORY}/rapidjson/document.h" header)
string(REPLACE "rhs) { s = rhs.s; length = rhs.length; }" "rhs) = delete;" header "${header}")
file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/external/rapidjson/document.h" CONTENT "${header}" @ONLY)
add_library(RapidJSON::Headers INTERFACE IMPORTED)
target_include_directories(RapidJSON::Headers INTERFACE "${CMAKE_BINARY_DIR}/external")
target_compile_definitions(RapidJSON::Headers INTERFACE RAPIDJSON_HAS_STDSTRING=1)

find_path(ASIO_INCLUDE_DIRECTORY asio.hpp REQUIRED)
add_library(Asio::Headers INTERFACE IMPORTED)
target_include_directories(Asio::Headers INTERFACE "${ASIO_INCLUDE_DIRECTORY}")
target_compile_definitions(Asio::Headers INTERFACE ASIO_STANDALONE ASIO_NO_DEPRECATED)
target_link_libraries(Asio::Headers INTERFACE Threads::Threads)

if(BUILD_TESTING)
    find_package(GTest REQUIRED)
endif()
if(STINTBOOK_BENCHMARKS)
    find_package(benchmark REQUIRED)
endif()
