# What the desktop program's package has.
install(TARGETS ras-log-browser RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR}
  COMPONENT ras-log-browser)
# zelq_install(FOLDER FILE...): installs into a folder of the share folder.
function(zelq_install folder)
  install(FILES ${ARGN} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} COMPONENT ras-log-browser)
endfunction()
set(PROGRAM_ID example.ras_log_browser.ras_log_browser)
get_target_property(data_files zelqresources DATA_FILES)
zelq_install(ras-log-browser ${data_files})
zelq_install(applications ras-log-browser.desktop)
zelq_install(mime/packages ras-log-browser.xml)
zelq_install(doc/ras-log-browser ${PROJECT_SOURCE_DIR}/docs/third-party.md)
zelq_install(doc/ras-log-browser/examples ${PROJECT_SOURCE_DIR}/samples/demo.log)

configure_file(metainfo.xml.in ${PROGRAM_ID}.metainfo.xml @ONLY)
zelq_install(metainfo ${CMAKE_CURRENT_BINARY_DIR}/${PROGRAM_ID}.metainfo.xml)

set(drawing ${CMAKE_CURRENT_SOURCE_DIR}/ras-log-browser.svg)
zelq_install(icons/hicolor/scalable/apps ${drawing})
foreach(size 16 22 24 32 48 64 128 256)
  set(image ${CMAKE_CURRENT_BINARY_DIR}/${size}/ras-log-browser.png)
  add_custom_command(
    OUTPUT ${image}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_CURRENT_BINARY_DIR}/${size}
    COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${image} ${drawing}
    DEPENDS ${drawing}
    VERBATIM)
  target_sources(documents PRIVATE ${image})
  zelq_install(icons/hicolor/${size}x${size}/apps ${image})
endforeach()

if(ASCIIDOCTOR AND PANDOC)
  zelq_man_page(ras-log-browser ras-log-browser.1)
  file(GLOB pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/pictures/*.png)
  zelq_html_page(ras-log-browser manual ${pictures})
endif()
