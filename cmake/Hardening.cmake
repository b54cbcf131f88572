# How Debian builds its programs, for the release alone: the debug presets find faults by other means
# and are built often. What the package holds links it; tests do not.

include(CheckPIESupported)
check_pie_supported()
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

set(hardening -fstack-protector-strong -fstack-clash-protection
    -Wformat -Werror=format-security -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2
    # No folder of whoever built it in the program.
    "-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|i.86)$")
    list(APPEND hardening -fcf-protection)
endif()
add_library(reelshift_hardening INTERFACE)
target_compile_options(reelshift_hardening INTERFACE "$<$<CONFIG:Release>:${hardening}>")
target_link_options(reelshift_hardening INTERFACE "$<$<CONFIG:Release>:-Wl,-z,relro,-z,now>")
