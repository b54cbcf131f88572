# What desktops and manuals read of the package, looked over by their own tools. The package itself
# is tried out by packaging/test, which is no part of these tests.

# reelshift_check(NAME FILE TOOL...): the tool has nothing to say against the file.
function(reelshift_check name file)
    add_test(NAME ${name} COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/check" "${file}" ${ARGN})
    set_tests_properties(${name} PROPERTIES TIMEOUT 60 SKIP_RETURN_CODE 77)
endfunction()

reelshift_check(package_desktop_entry "${PROJECT_SOURCE_DIR}/resources/example.quorvex.reelshift.desktop"
    desktop-file-validate)
reelshift_check(package_metainfo "${made}/example.quorvex.reelshift.metainfo.xml"
    appstreamcli validate --no-net --pedantic --explain)
foreach(language IN LISTS REELSHIFT_LANGUAGES)
    reelshift_check(package_manual_page_${language}
        "${REELSHIFT_MANUAL_DIR}/${language}/man1/reelshift.1"
        man --warnings --encoding=UTF-8 --local-file)
endforeach()
