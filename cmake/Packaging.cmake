# SPDX-License-Identifier: MIT
# "cpack" in the build folder makes two Debian packages: the plugin for whatever host loads it, and the
# stand-in host for people who have none.

set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL plugin host) # the contract's files are for those who build a host
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_VENDOR "The gamepad plugin's authors")
set(CPACK_PACKAGE_CONTACT "The gamepad plugin's authors <maintainers@gamepad-interface.invalid>")
set(CPACK_RESOURCE_FILE_LICENSE "${PROJECT_SOURCE_DIR}/LICENSE")

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
# The libraries that the binaries were linked with name the packages that they come from.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)

set(CPACK_DEBIAN_PLUGIN_PACKAGE_NAME gamepad-interface)
set(CPACK_DEBIAN_PLUGIN_PACKAGE_SECTION libs)
set(CPACK_COMPONENT_PLUGIN_DESCRIPTION "Gamepads for a desktop control application
A loadable Qt 6 plugin that finds joysticks, learns where their axes rest, and
hands the application corrected values, with an editor for what inputs run.")

set(CPACK_DEBIAN_HOST_PACKAGE_NAME gamepad-host)
set(CPACK_DEBIAN_HOST_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_HOST_PACKAGE_DEPENDS "gamepad-interface (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_HOST_DESCRIPTION "Stand-in host of the gamepad plugin
Loads the plugin as a control application does, shows what it sends, and opens
its configuration window.")

# Debian keeps the terms of each package at a place of its own.
install(FILES LICENSE DESTINATION share/doc/gamepad-interface RENAME copyright COMPONENT plugin)
install(FILES LICENSE DESTINATION share/doc/gamepad-host RENAME copyright COMPONENT host)

include(CPack)
