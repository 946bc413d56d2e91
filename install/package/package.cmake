# What `cmake --build ... --target package` makes: polefit and polefit-cli as .debs of the shared
# installation, and one archive of the portable folder.
set(CPACK_GENERATOR "DEB;TGZ")
set(CPACK_PACKAGE_VENDOR "the Polefit developers")
set(CPACK_PACKAGE_CONTACT "the Polefit developers <support@polefit.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "find the poles and zeros of a filter's transfer function")
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/cpack_generator.cmake)
set(CPACK_PACKAGE_FILE_NAME polefit-${PROJECT_VERSION}-linux-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(about
    "Polefit finds the poles and zeros of the H(s) that turns a signal as it comes
in into the signal as it should come out, both given as samples over
frequency, with the group delay flattened on the way if wanted.")
set(CPACK_DEBIAN_WINDOW_PACKAGE_NAME polefit)
set(CPACK_COMPONENT_WINDOW_DESCRIPTION "${about}
.
This package holds the program with windows, its manual and the examples.")
set(CPACK_DEBIAN_WINDOW_PACKAGE_DEPENDS "polefit-cli (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_CONSOLE_PACKAGE_NAME polefit-cli)
set(CPACK_COMPONENT_CONSOLE_DESCRIPTION "${about}
.
This package holds the solver pfit and the commands that need no window.")

set(CPACK_ARCHIVE_COMPONENT_INSTALL ON)
include(CPack)
