# What `cmake --install` puts where, and the Debian package that CPack makes of it.
include(GNUInstallDirs)
set(packaging ${CMAKE_CURRENT_LIST_DIR})
set(share ${CMAKE_INSTALL_DATADIR})

function(vael_man name summary)
  set(page ${CMAKE_BINARY_DIR}/man/${name}.1)
  add_custom_command(OUTPUT ${page}
    COMMAND ${CMAKE_COMMAND} -DPROGRAM=$<TARGET_FILE:${name}> -DNAME=${name} -DVERSION=${PROJECT_VERSION}
      "-DSUMMARY=${summary}" -DOUT=${page} -P ${packaging}/man.cmake
    DEPENDS ${name} ${packaging}/man.cmake VERBATIM)
  add_custom_target(${name}-man ALL DEPENDS ${page})
  install(FILES ${page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()

install(TARGETS vael-batch DESTINATION ${CMAKE_INSTALL_BINDIR})
vael_man(vael-batch "reduces diffraction spectra to peaks, cell and pressure")
install(FILES data/crystal.dat data/atomic.dat data/History.txt DESTINATION ${share}/vael)
install(DIRECTORY data/samples DESTINATION ${share}/vael)
install(FILES README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} RENAME copyright)
install(DIRECTORY docs DESTINATION ${CMAKE_INSTALL_DOCDIR})

if(TARGET vael)
  install(TARGETS vael DESTINATION ${CMAKE_INSTALL_BINDIR})
  vael_man(vael "workbench for energy-dispersive X-ray diffraction under high pressure")
  install(FILES ${packaging}/vael.desktop DESTINATION ${share}/applications)
  install(FILES ${packaging}/vael.metainfo.xml DESTINATION ${share}/metainfo)
  install(FILES ${packaging}/vael-mime.xml DESTINATION ${share}/mime/packages RENAME vael.xml)
  set(icon ${CMAKE_SOURCE_DIR}/src/desktop/icons/vael.svg)
  install(FILES ${icon} DESTINATION ${share}/icons/hicolor/scalable/apps)

  add_executable(vael-icons ${packaging}/icons.cpp)
  target_link_libraries(vael-icons PRIVATE vael_flags Qt6::Gui Qt6::Svg)
  set(sizes 16 22 24 32 48 64 128 256)
  list(TRANSFORM sizes REPLACE "(.+)" "${CMAKE_BINARY_DIR}/icons/\\1.png" OUTPUT_VARIABLE pictures)
  add_custom_command(OUTPUT ${pictures}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/icons
    COMMAND vael-icons ${icon} ${CMAKE_BINARY_DIR}/icons ${sizes}
    DEPENDS vael-icons ${icon} VERBATIM)
  add_custom_target(vael-pictures ALL DEPENDS ${pictures})
  foreach(size IN LISTS sizes)
    install(FILES ${CMAKE_BINARY_DIR}/icons/${size}.png
      DESTINATION ${share}/icons/hicolor/${size}x${size}/apps RENAME vael.png)
  endforeach()
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vael)
set(CPACK_PACKAGE_CONTACT "The Vael authors <vael@localhost>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "workbench for energy-dispersive X-ray diffraction")
set(CPACK_PACKAGE_DESCRIPTION "From the counts of a multichannel analyser at a high-pressure press to peaks,
the cell of a crystal with its errors, and the pressure by a marker's equation of state; a batch
program goes the same road for whole runs.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "fonts-ipafont-gothic")
include(CPack)
