# What an installation on Linux has besides the programs, and the Debian package that `cpack` makes of it.
# To be included before the programs are defined.
if(NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  return()
endif()

set(QUILLON_VERSION ${PROJECT_VERSION}${QUILLON_VERSION_SUFFIX})
string(REPLACE "-" "~" QUILLON_DEBIAN_VERSION ${QUILLON_VERSION})  # a beta sorts before its release
set(QUILLON_DEBIAN_REVISION 1)
set(QUILLON_MAN_DATE "November 21, 2026")
set(QUILLON_RELEASE_DATE 2026-11-21)
set(made ${PROJECT_BINARY_DIR}/debian)

# The programs themselves lie apart; what a user starts tells them where the user's folder is.
set(commands ${CMAKE_INSTALL_BINDIR})
set(CMAKE_INSTALL_BINDIR lib/quillon)
file(RELATIVE_PATH TO_PROGRAMS /${commands} /${CMAKE_INSTALL_BINDIR})
foreach(PROGRAM quillon Larkmoor)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/program.in ${made}/${PROGRAM} @ONLY)
  install(PROGRAMS ${made}/${PROGRAM} DESTINATION ${commands})
endforeach()

# A text with the version filled in, compressed as manual pages and changelogs are.
function(install_compressed source name folder)
  configure_file(${source} ${made}/${name} @ONLY)
  add_custom_command(OUTPUT ${made}/${name}.gz COMMAND gzip -9nkf ${made}/${name} DEPENDS ${made}/${name} VERBATIM)
  set_property(GLOBAL APPEND PROPERTY QUILLON_COMPRESSED ${made}/${name}.gz)
  install(FILES ${made}/${name}.gz DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/${folder})
endfunction()
install_compressed(${CMAKE_CURRENT_LIST_DIR}/quillon.1.in quillon.1 man/man1)
install_compressed(${CMAKE_CURRENT_LIST_DIR}/Larkmoor.1.in Larkmoor.1 man/man1)
install_compressed(${CMAKE_CURRENT_LIST_DIR}/changelog.in changelog.Debian doc/quillon)
install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md changelog doc/quillon)
get_property(compressed GLOBAL PROPERTY QUILLON_COMPRESSED)
add_custom_target(debian_texts ALL DEPENDS ${compressed})

function(install_as source folder name)
  install(FILES ${source} DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/${folder} RENAME ${name})
endfunction()
set(icon ${PROJECT_SOURCE_DIR}/art/icon/quillon.svg)
install_as(${icon} icons/hicolor/scalable/apps quillon.svg)
foreach(size 16x16 22x22 24x24)
  install_as(${PROJECT_SOURCE_DIR}/art/icon/quillon-small.svg icons/hicolor/${size}/apps quillon.svg)
endforeach()
install_as(${icon} icons/hicolor/scalable/mimetypes application-x-quillon-route.svg)
install_as(${icon} icons/hicolor/scalable/mimetypes application-x-quillon-terrain.svg)
set(metainfo example.quillon.quillon.metainfo.xml)
configure_file(${PROJECT_SOURCE_DIR}/packaging/linux/${metainfo}.in ${made}/${metainfo} @ONLY)
install_as(${made}/${metainfo} metainfo ${metainfo})
install_as(${CMAKE_CURRENT_LIST_DIR}/quillon.desktop applications quillon.desktop)
install_as(${CMAKE_CURRENT_LIST_DIR}/quillon.xml mime/packages quillon.xml)
install_as(${CMAKE_CURRENT_LIST_DIR}/quillon.bash-completion bash-completion/completions quillon)
install_as(${CMAKE_CURRENT_LIST_DIR}/copyright doc/quillon copyright)
# What a package's script has made; a plain build has none.
install(FILES ${made}/THIRD-PARTY.txt DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillon OPTIONAL)
install_as(${CMAKE_CURRENT_LIST_DIR}/quillon.lintian-overrides lintian/overrides quillon)
install_as(${PROJECT_SOURCE_DIR}/docs/custom-scripts.md doc/quillon custom-scripts.md)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quillon)
set(CPACK_PACKAGE_VERSION ${QUILLON_DEBIAN_VERSION})
set(CPACK_PACKAGE_CONTACT "Ostrand <quillon@ostrand.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "route manager for Microsoft Train Simulator")
set(CPACK_PACKAGE_DESCRIPTION "\
Quillon takes downloaded route zips, sorts out what can't be used, rebuilds
what needs it, keeps each route as one compressed file with its preview,
documents and activities, and puts exactly one at a time into the game. It
also tells which activities, services and consists of the game can not work.
.
Larkmoor is the program with a window, quillon does the same by commands.
The game itself is not part of this package.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${QUILLON_DEBIAN_REVISION})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# The face that the screens are measured for; what opens documents and folders.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-dejavu-core, xdg-utils")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qt6-wayland, wine")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
