tavona_test(uidriver_tests WINDOWS UI SOURCES tests/test_uidriver.cpp)
