tavona_sources(WINDOWS controls/datedialogs.cpp EXPORTS controls/exports_datedialogs.def)

tavona_test(date_dialog_tests WINDOWS UI SOURCES tests/test_dates_dialogs.cpp)
