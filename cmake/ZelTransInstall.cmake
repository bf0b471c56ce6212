# Where everything is installed: the places of the GNU and freedesktop conventions, below any prefix. The installed tree
# may be moved: each file finds the others relative to its own place. The components are those of the Debian packages.
if(NOT CMAKE_INSTALL_DOCDIR)
  set(CMAKE_INSTALL_DOCDIR share/doc/zeltrans)
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(zel_plugin_directory ${CMAKE_INSTALL_LIBDIR}/zeltrans)

# zel_install_path(<variable> <from> <to>): the run path from one directory of the installed tree to another.
function(zel_install_path variable from to)
  set(root /zeltrans-prefix)
  cmake_path(ABSOLUTE_PATH from BASE_DIRECTORY ${root})
  cmake_path(ABSOLUTE_PATH to BASE_DIRECTORY ${root})
  cmake_path(RELATIVE_PATH to BASE_DIRECTORY ${from})
  string(REGEX REPLACE "/\\.?$" "" to "${to}")
  set(${variable} "$ORIGIN/${to}" PARENT_SCOPE)
endfunction()

# Manual pages, by the section at the end of their names: zel_install_manual(<component> <file>...)
function(zel_install_manual component)
  foreach(page ${ARGN})
    cmake_path(GET page EXTENSION LAST_ONLY section)
    string(SUBSTRING ${section} 1 1 section)
    install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man${section} COMPONENT ${component})
    if(ZELTRANS_PACKAGES)  # whose pages are compressed, without a time
      cmake_path(GET page FILENAME name)
      set(installed ${CMAKE_INSTALL_MANDIR}/man${section}/${name})
      install(CODE "
        cmake_path(SET page \"${installed}\")
        cmake_path(ABSOLUTE_PATH page BASE_DIRECTORY \"\${CMAKE_INSTALL_PREFIX}\")
        execute_process(COMMAND gzip -9nf \"\$ENV{DESTDIR}\${page}\" COMMAND_ERROR_IS_FATAL ANY)"
        COMPONENT ${component})
    endif()
  endforeach()
endfunction()

# The completions of one program: zel_install_completions(<program> <bash file> <zsh file> <fish file>)
function(zel_install_completions program bash zsh fish)
  install(FILES ${bash} DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME ${program} COMPONENT command)
  install(FILES ${zsh} DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions RENAME _${program} COMPONENT command)
  install(FILES ${fish} DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d RENAME ${program}.fish COMPONENT command)
endfunction()

# The module and its framework. The link of a shared library belongs to those who link.
foreach(target zeltrans zel_platform)
  set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
endforeach()
set_target_properties(zeltrans PROPERTIES EXPORT_NAME module)
set_target_properties(zel_platform PROPERTIES EXPORT_NAME platform)
set_target_properties(zelformats PROPERTIES EXPORT_NAME formats)
target_compile_features(zeltrans INTERFACE cxx_std_20)
target_compile_features(zelformats INTERFACE cxx_std_20)
install(TARGETS zeltrans zel_platform EXPORT ZelTransModule
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT library NAMELINK_COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(TARGETS zelformats EXPORT ZelTransFormats
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# The headers of the contract, of the readers, and what they include or a host needs besides; and the examples.
set(zel_public_sources "
  set(root \"${PROJECT_SOURCE_DIR}\")
  set(staging \"${PROJECT_BINARY_DIR}/installed\")
  set(headers_directory \"${CMAKE_INSTALL_INCLUDEDIR}/zeltrans\")
  set(examples_directory \"${CMAKE_INSTALL_DOCDIR}/examples\")")
install(CODE "${zel_public_sources}
  include(\"${PROJECT_SOURCE_DIR}/cmake/install/headers.cmake\")" COMPONENT development)
install(CODE "${zel_public_sources}
  include(\"${PROJECT_SOURCE_DIR}/cmake/install/examples.cmake\")" COMPONENT documentation)

# For find_package(ZelTrans) and pkg-config.
set(zel_config_directory ${CMAKE_INSTALL_LIBDIR}/cmake/ZelTrans)
foreach(component Module Formats)
  install(EXPORT ZelTrans${component} NAMESPACE ZelTrans:: DESTINATION ${zel_config_directory} COMPONENT development)
endforeach()
configure_package_config_file(cmake/install/ZelTransConfig.cmake.in ${PROJECT_BINARY_DIR}/ZelTransConfig.cmake
  INSTALL_DESTINATION ${zel_config_directory} NO_SET_AND_CHECK_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/ZelTransConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/ZelTransConfig.cmake ${PROJECT_BINARY_DIR}/ZelTransConfigVersion.cmake
  DESTINATION ${zel_config_directory} COMPONENT development)
zel_install_path(pkgconfig_to_prefix ${CMAKE_INSTALL_LIBDIR}/pkgconfig .)
string(REPLACE "$ORIGIN" "\${pcfiledir}" pkgconfig_to_prefix ${pkgconfig_to_prefix})
foreach(name zeltrans zeltrans-formats)
  configure_file(cmake/install/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)
endforeach()

# The command, and the libraries that it and the desktop program load from a directory of their own.
if(TARGET zeltrans_cli)
  zel_install_path(to_plugins ${CMAKE_INSTALL_BINDIR} ${zel_plugin_directory})
  zel_install_path(to_libraries ${zel_plugin_directory} ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zeltrans_cli PROPERTIES INSTALL_RPATH "${to_plugins}")
  set_target_properties(zeltrans_commands PROPERTIES INSTALL_RPATH "$ORIGIN;${to_libraries}")
  install(TARGETS zeltrans_cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT command)
  install(TARGETS zeltrans_commands LIBRARY DESTINATION ${zel_plugin_directory} COMPONENT command)
  foreach(plugin zeltrans_ftp zeltrans_archive)
    if(TARGET ${plugin})
      set_target_properties(${plugin} PROPERTIES INSTALL_RPATH "${to_libraries}")
      install(TARGETS ${plugin} LIBRARY DESTINATION ${zel_plugin_directory} COMPONENT command)
    endif()
  endforeach()
endif()
# With it the file types, which only the command can show.
if(TARGET zeltrans_cli)
  set(desktop_files packaging/desktop)
  install(FILES ${desktop_files}/zeltrans.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT command)
  install(FILES ${desktop_files}/zeltrans.thumbnailer DESTINATION ${CMAKE_INSTALL_DATADIR}/thumbnailers COMPONENT command)
  install(FILES ${desktop_files}/zelmara.magic DESTINATION ${CMAKE_INSTALL_DATADIR}/zeltrans COMPONENT command)
endif()
if(TARGET zeltrans_desktop)
  set(theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  foreach(size 16 24 32 48 64 128 256)
    install(FILES packaging/icons/zeltrans-desktop-${size}.png DESTINATION ${theme}/${size}x${size}/apps
      RENAME zeltrans-desktop.png COMPONENT desktop)
  endforeach()
  install(FILES packaging/icons/zeltrans-desktop.svg DESTINATION ${theme}/scalable/apps COMPONENT desktop)
  install(FILES packaging/desktop/zeltrans-desktop.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT desktop)
  string(TIMESTAMP zel_release_date "%Y-%m-%d" UTC)
  set(zel_metainfo ${PROJECT_BINARY_DIR}/local.zeltrans.desktop.metainfo.xml)
  configure_file(packaging/desktop/local.zeltrans.desktop.metainfo.xml.in ${zel_metainfo} @ONLY)
  install(FILES ${zel_metainfo} DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT desktop)
  zel_install_path(to_libraries ${CMAKE_INSTALL_BINDIR} ${CMAKE_INSTALL_LIBDIR})
  set_target_properties(zeltrans_desktop PROPERTIES INSTALL_RPATH "${to_libraries}/zeltrans;${to_libraries}")
  install(TARGETS zeltrans_desktop RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT desktop)
endif()

# The manual pages and the completions.
if(TARGET zeltrans_manual)
  foreach(part COMMAND DESKTOP LIBRARY)
    get_target_property(pages zeltrans_manual ZEL_${part}_PAGES)
    string(TOLOWER ${part} component)
    if(part STREQUAL LIBRARY)
      set(component development)
    endif()
    zel_install_manual(${component} ${pages})
  endforeach()
  get_target_property(completions zeltrans_manual ZEL_COMPLETIONS)
  zel_install_completions(zeltrans ${completions})
endif()

install(FILES README.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
  FILES_MATCHING PATTERN "*.md" PATTERN "*.png" PATTERN "*.ksy" PATTERN "*.json")
