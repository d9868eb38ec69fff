# A Debian package of exactly what `cmake --install` puts in place, built by
# `cpack -G DEB` in the build folder. The libraries come from dpkg-shlibdeps;
# the QML modules are loaded at run time, so no linker sees them and they are
# named here, as scripts/install-deps names them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velmar)
set(CPACK_PACKAGE_VENDOR "The Velmar developers")
set(CPACK_PACKAGE_CONTACT "The Velmar developers")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Watch the open pull requests of your GitHub repositories")
set(CPACK_PACKAGE_DESCRIPTION
    "A small panel that lists the open pull requests of the GitHub repositories you watch, with one-click links to each pull request and its preview deployment, through the GitHub CLI under your own login.")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION devel)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "qml6-module-qtquick, qml6-module-qtquick-controls, qml6-module-qtquick-layouts, qml6-module-qtquick-window, qml6-module-qtquick-templates, qml6-module-qtqml-workerscript, qml6-module-qtquick-shapes, qml6-module-qtquick-dialogs")
# Velmar starts and guides the user without gh; Wayland works through XWayland
# without the native plugin.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "gh, qt6-wayland, fonts-noto-color-emoji")

include(CPack)
