# The Debian packages that scripts/package makes with CPack, one for each component of the installed tree.
set(maintainer "The ZelTrans developers <developers@zeltrans.invalid>")  # a name that no mail is sent to

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zeltrans)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each package has its own
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL command desktop library development documentation)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The libraries of another component.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# zel_package(<component> <package> <section> <multi-arch> <depends> <summary> <description>)
set(same "(= ${PROJECT_VERSION})")
macro(zel_package component package section multiarch depends summary description)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${section})
  set(CPACK_DEBIAN_${upper}_PACKAGE_MULTIARCH ${multiarch})
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${depends}")
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${summary}\n${description}")
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${summary}\n${description}")
  install(FILES packaging/debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  if(EXISTS ${PROJECT_SOURCE_DIR}/packaging/debian/${package}.lintian-overrides)
    install(FILES packaging/debian/${package}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
      RENAME ${package} COMPONENT ${component})
  endif()
endmacro()
zel_package(command zeltrans graphics foreign "libzeltrans0 ${same}, fonts-dejavu-core"
  "import of Zelmara! messages and fonts"
  "The command zeltrans reads the messages and bitmap fonts of the Zelmara!\ncharacter generator: it writes pictures, documents and reports of damage,\nrecords whole disks in a library and exports them for other systems. File\nmanagers show thumbnails of both kinds of files.")
set(CPACK_DEBIAN_COMMAND_PACKAGE_SUGGESTS "zeltrans-desktop, zeltrans-doc")
zel_package(desktop zeltrans-desktop graphics no "zeltrans ${same}, libzeltrans0 ${same}"
  "import of Zelmara! messages and fonts, with windows"
  "The program zeltrans-desktop shows the messages and bitmap fonts of the\nZelmara! character generator, keeps them in a library and exports them. It\nalso has the dialogs of the import module.")
zel_package(library libzeltrans0 libs same ""
  "import module for Zelmara! messages and fonts"
  "The module libzeltrans passes the messages and bitmap fonts of the Zelmara!\ncharacter generator to a host: rows of positioned, coloured characters, and\nthe pixels of their glyphs on demand.")
zel_package(development libzeltrans-dev libdevel same "libzeltrans0 ${same}"
  "import module for Zelmara! messages and fonts, for development"
  "Headers, CMake and pkg-config files of the import module libzeltrans, and the\nstatic library of the readers without a host.")
zel_package(documentation zeltrans-doc doc foreign ""
  "import of Zelmara! messages and fonts, documentation"
  "The formats of messages and fonts, byte by byte, the behaviour of the import\nmodule, the outputs of the command, and examples in C++.")
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SHLIBDEPS OFF)

# What CPack would make of the libraries also has scripts, which the trigger replaces.
configure_file(packaging/debian/shlibs.in shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARY_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/shlibs ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)

# The time of the sources, which scripts/package gives, so that the same sources make the same packages.
if(NOT DEFINED ENV{SOURCE_DATE_EPOCH})
  message(FATAL_ERROR "SOURCE_DATE_EPOCH is not set: make packages by scripts/package")
endif()
execute_process(COMMAND date -uR -d @$ENV{SOURCE_DATE_EPOCH} OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE
  COMMAND_ERROR_IS_FATAL ANY)
execute_process(
  COMMAND awk -v maintainer=${maintainer} -v date=${date} -v current=${PROJECT_VERSION}
    -f ${PROJECT_SOURCE_DIR}/packaging/debian/changelog.awk ${PROJECT_SOURCE_DIR}/CHANGELOG.md
  COMMAND gzip -9n OUTPUT_FILE ${PROJECT_BINARY_DIR}/changelog.gz COMMAND_ERROR_IS_FATAL ANY)
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS CHANGELOG.md packaging/debian/changelog.awk)
include(CPack)
