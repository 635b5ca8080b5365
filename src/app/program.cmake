# The desktop program: library, executable, texts and icons.
find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets LinguistTools)

add_library(zelqgui STATIC)
set_target_properties(zelqgui PROPERTIES AUTOMOC ON)
zelq_folders(zelqgui resources widgets dialogs filters ui app)
qt_add_resources(program_icon ${CMAKE_CURRENT_SOURCE_DIR}/resources/zelqprogram.qrc)
target_sources(zelqgui PRIVATE ${program_icon})
target_link_libraries(zelqgui PUBLIC zelqcore Qt6::Widgets Boost::headers PRIVATE zelqversion)
zelq_precompile(zelqgui <QAction> <QApplication> <QDialog> <QHeaderView> <QLabel> <QListView>
  <QMouseEvent> <QPainter> <QPushButton> <QScrollBar> <QTableView> <QTimer> <algorithm> <functional>
  <memory> <optional> <string> <thread> <vector>)

# The resource library and the icon module are files of their own beside the executable.
set(data_dir ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
set(resource_dir ${CMAKE_CURRENT_SOURCE_DIR}/resources)
foreach(texts ZLQUOR3U ZLQUOR3U_de)
  add_custom_command(
    OUTPUT ${data_dir}/${texts}.qm
    COMMAND Qt6::lrelease -silent -idbased ${resource_dir}/${texts}.ts -qm ${data_dir}/${texts}.qm
    DEPENDS ${resource_dir}/${texts}.ts
    VERBATIM)
  list(APPEND data_files ${data_dir}/${texts}.qm)
endforeach()

# Qt trusts the icon module's bytes, so their checksum stands beside it. The icons are drawn here in
# every size a screen may want, so that the program needs no plug-in for SVG.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
set(icon_dir ${CMAKE_CURRENT_BINARY_DIR}/icons)
configure_file(${resource_dir}/zelqicon.qrc ${icon_dir}/zelqicon.qrc COPYONLY)
foreach(icon 1 2 3 6)
  foreach(size 16 24 32 48)
    set(image ${icon_dir}/${icon}-${size}.png)
    add_custom_command(
      OUTPUT ${image}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${image} ${resource_dir}/icons/${icon}.svg
      DEPENDS ${resource_dir}/icons/${icon}.svg
      VERBATIM)
    list(APPEND images ${image})
  endforeach()
endforeach()
add_custom_command(
  OUTPUT ${data_dir}/zelqicon.rcc ${data_dir}/zelqicon.rcc.sha256
  COMMAND Qt6::rcc --binary ${icon_dir}/zelqicon.qrc -o zelqicon.rcc
  COMMAND ${CMAKE_COMMAND} -E sha256sum zelqicon.rcc > zelqicon.rcc.sha256
  DEPENDS ${icon_dir}/zelqicon.qrc ${images}
  WORKING_DIRECTORY ${data_dir}
  VERBATIM)
list(APPEND data_files ${data_dir}/zelqicon.rcc ${data_dir}/zelqicon.rcc.sha256)
add_custom_target(zelqresources ALL DEPENDS ${data_files})
set_target_properties(zelqresources PROPERTIES DATA_FILES "${data_files}")

# The program finds what is installed from its own place, so that a tree can be moved.
include(GNUInstallDirs)
file(RELATIVE_PATH installed_data_dir
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/ras-log-browser)
file(RELATIVE_PATH installed_manual_dir
  ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_DATADIR}/doc/ras-log-browser)
file(RELATIVE_PATH built_manual_dir ${data_dir} ${PROJECT_BINARY_DIR}/packaging/doc/ras-log-browser)
target_compile_definitions(zelqgui PRIVATE INSTALLED_DATA="${installed_data_dir}"
  INSTALLED_MANUAL="${installed_manual_dir}" BUILT_MANUAL="${built_manual_dir}")

add_executable(ras-log-browser)
zelq_sources(ras-log-browser app/main.cpp)
target_link_libraries(ras-log-browser PRIVATE zelqgui)
add_dependencies(ras-log-browser zelqresources)
