# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Settings that every target shares, and tallyforge_library() for the folders of src/.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_CXX_SCAN_FOR_MODULES OFF)

add_library(tallyforge-options INTERFACE)
target_compile_options(tallyforge-options INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(TALLYFORGE_WERROR)
  target_compile_options(tallyforge-options INTERFACE -Werror)
endif()
if(TALLYFORGE_SANITIZE)
  target_compile_options(tallyforge-options INTERFACE -fsanitize=${TALLYFORGE_SANITIZE} -fno-omit-frame-pointer)
  target_link_options(tallyforge-options INTERFACE -fsanitize=${TALLYFORGE_SANITIZE})
endif()
target_compile_definitions(tallyforge-options INTERFACE
  QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_CONTEXTLESS_CONNECT QT_NO_KEYWORDS)
target_include_directories(tallyforge-options INTERFACE "${PROJECT_SOURCE_DIR}/src")

# tallyforge_precompile(<name> HEADERS … LINK …): compiles once the headers that nearly every file
# includes. A program can reuse only headers compiled for a program, and no target can reuse headers
# compiled with a macro that it doesn't define. So there is one such target for libraries, with few
# macros, and one for tests. A missing include shows in the presets without precompiled headers and
# in clang-tidy.
function(tallyforge_precompile name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINK")
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${name}.cpp")
  file(CONFIGURE OUTPUT "${source}" CONTENT "int main() {}\n")
  if(name MATCHES "tests$")
    add_executable(${name} "${source}")
  else()
    add_library(${name} STATIC "${source}")
  endif()
  set_target_properties(${name} PROPERTIES AUTOMOC OFF)
  target_link_libraries(${name} PRIVATE tallyforge-options ${arg_LINK})
  target_include_directories(${name} SYSTEM PRIVATE
    $<TARGET_PROPERTY:Qt6::Network,INTERFACE_INCLUDE_DIRECTORIES>)
  target_precompile_headers(${name} PRIVATE ${arg_HEADERS})
endfunction()
set(precompiled <algorithm> <chrono> <functional> <memory> <optional> <utility>
  <QByteArray> <QCoreApplication> <QDir> <QFile> <QFileInfo> <QJsonArray> <QJsonDocument>
  <QJsonObject> <QList> <QNetworkAccessManager> <QNetworkReply> <QObject> <QPointer> <QString>
  <QStringList> <QTcpServer> <QTcpSocket> <QTimer> <QUrl>)
tallyforge_precompile(tallyforge-precompiled LINK Qt6::Core HEADERS ${precompiled})

# tallyforge_library(<folder> SOURCES … LINK …): one static library for a folder of src/, known to
# others as Tallyforge::<folder>. The folder may use nothing but the targets behind LINK.
function(tallyforge_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LINK")
  add_library(tallyforge-${folder} STATIC ${arg_SOURCES})
  add_library(Tallyforge::${folder} ALIAS tallyforge-${folder})
  target_link_libraries(tallyforge-${folder} PUBLIC tallyforge-options ${arg_LINK})
  target_precompile_headers(tallyforge-${folder} REUSE_FROM tallyforge-precompiled)
endfunction()

# tallyforge_build_config(<version>): sets the values of BuildConfig.cpp in the calling folder.
function(tallyforge_build_config version)
  set_source_files_properties("${PROJECT_SOURCE_DIR}/src/common/BuildConfig.cpp" PROPERTIES COMPILE_DEFINITIONS
    "TALLYFORGE_VERSION=\"${version}\";\
TALLYFORGE_PORTAL_URL=\"${TALLYFORGE_PORTAL_URL}\";\
TALLYFORGE_UPDATE_MANIFEST_URL=\"${TALLYFORGE_UPDATE_MANIFEST_URL}\";\
TALLYFORGE_DOWNLOAD_PAGE_URL=\"${TALLYFORGE_DOWNLOAD_PAGE_URL}\"")
endfunction()
