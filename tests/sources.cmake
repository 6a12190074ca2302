tavona_test(uidriver_tests WINDOWS UI SOURCES tests/test_uidriver.cpp)
tavona_test(hostile_tests WINDOWS UI SOURCES tests/test_hostile.cpp tests/test_hostile.rc)
