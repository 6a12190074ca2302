tavona_sources(
  PORTABLE
    printing/copylist.cpp
    printing/paper.cpp
  WINDOWS
    printing/printers.cpp
    printing/copydialogs.cpp
  EXPORTS
    printing/exports.def)

tavona_test(printing_tests HOST INTERNAL SOURCES tests/test_printing_internal.cpp)
tavona_test(printing_win_tests WINDOWS UI PRINTER SOURCES tests/test_printing.cpp)
tavona_test(printing_dialog_tests WINDOWS UI PRINTER SOURCES tests/test_printing_dialogs.cpp)

tavona_fuzz(fuzz_printing_texts SOURCES fuzz/fuzz_printing_texts.cpp)
