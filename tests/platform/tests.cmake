# Tests of the platform.
glidepath_test(tst_convert platform platform/tst_convert.cpp)
glidepath_test(tst_files platform platform/tst_files.cpp)
glidepath_test(tst_profile platform platform/tst_profile.cpp)
glidepath_test(tst_forms platform platform/tst_forms.cpp)
glidepath_test(tst_components platform platform/tst_components.cpp)
glidepath_test(tst_send_keys platform platform/tst_send_keys.cpp)
glidepath_test(tst_sounds platform platform/tst_sounds.cpp)
glidepath_test(tst_crlf_text platform platform/tst_crlf_text.cpp)
