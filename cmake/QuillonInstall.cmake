# What `cmake --install` puts into a prefix: a relocatable package that a host picks up with
# find_package(Quillon), pkg-config or Python, beside the program, the examples and the docs.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(QUILLON_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/Quillon)

install(TARGETS quillon EXPORT QuillonTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
  INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES include/quillon/quillon.h include/quillon/quillon_message.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillon)
install(EXPORT QuillonTargets NAMESPACE Quillon:: DESTINATION ${QUILLON_CMAKE_DIR})

# The component Widget: Quillon::widget and <quillon/QuillonWidget.h>.
if(TARGET quillon_widget_shared)
  install(TARGETS quillon_widget_shared EXPORT QuillonWidgetTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(FILES src/widget/QuillonWidget.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/quillon)
  install(EXPORT QuillonWidgetTargets NAMESPACE Quillon:: DESTINATION ${QUILLON_CMAKE_DIR})
endif()

configure_package_config_file(cmake/QuillonConfig.cmake.in ${PROJECT_BINARY_DIR}/QuillonConfig.cmake
  INSTALL_DESTINATION ${QUILLON_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/QuillonConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/QuillonConfig.cmake ${PROJECT_BINARY_DIR}/QuillonConfigVersion.cmake
  DESTINATION ${QUILLON_CMAKE_DIR})

# pkg-config finds the prefix from where the file lies, so the prefix can move.
file(RELATIVE_PATH QUILLON_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" QUILLON_PC_TO_PREFIX "${QUILLON_PC_TO_PREFIX}")
configure_file(cmake/quillon.pc.in ${PROJECT_BINARY_DIR}/quillon.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/quillon.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TARGET quillon_app)
  # The program holds the viewer itself and needs no library of the prefix.
  install(TARGETS quillon_app RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endif()
install(DIRECTORY examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/quillon/examples)
install(FILES README.md DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillon)
install(DIRECTORY docs/ DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/quillon FILES_MATCHING PATTERN "*.md")
# The Python package finds the library in the prefix's library folder by itself.
install(DIRECTORY python/quillon DESTINATION ${CMAKE_INSTALL_LIBDIR}/python3/dist-packages
  PATTERN __pycache__ EXCLUDE)
