# The release archive, unpacked and installed as a user does.
add_test(NAME tst_release COMMAND ${CMAKE_CURRENT_SOURCE_DIR}/release/tst_release.sh ${CMAKE_BINARY_DIR})
set_tests_properties(tst_release PROPERTIES FIXTURES_REQUIRED platform RESOURCE_LOCK platform TIMEOUT 120
                                            ENVIRONMENT "${platform_environment};QT_QPA_PLATFORM=xcb")
