# What CPack makes of the installed files.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME reelshift)
set(CPACK_PACKAGE_VERSION "${PROJECT_VERSION}")
set(CPACK_PACKAGE_CONTACT "${maintainer}")
set(CPACK_PRE_BUILD_SCRIPTS "${CMAKE_CURRENT_SOURCE_DIR}/strip.cmake")
# Whatever the umask of whoever builds it.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "${debian_revision}")
set(CPACK_DEBIAN_PACKAGE_SECTION video)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${REELSHIFT_HOME_URL}")
# The libraries are found out by dpkg-shlibdeps, and with them comes the plugin for X11, which is in
# the package of Qt's library. The encoder and the plugin for Wayland are looked for while the program
# runs. A dependency and no recommendation, as other programs in Debian have it that know both: without
# the plugin the program does not get as far as a message where there is a Wayland display alone.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "ffmpeg, qt6-wayland")
# The authorities that secure update servers are checked by; Qt's own texts in other languages.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "ca-certificates, qt6-translations-l10n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "converter of HEVC movies into H.264 MP4 files")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Cameras and phones record HEVC (H.265); many players and editors want H.264.
Quorvex Reelshift turns a pile of HEVC movies into H.264 MP4 files, one after
the other, in one of three qualities and in the sizes that suit each movie.
The encoding is done by ffmpeg; the sound is copied as it is.
.
A conversion can be paused, resumed and stopped. The movies themselves are
never touched, and half a file is not left behind.")

include(CPack)
