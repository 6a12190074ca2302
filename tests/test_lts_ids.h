// Identifiers of the translation tests' resources (tests/test_lts.rc).
#pragma once

#define IDD_TEST_SETTINGS 300
#define IDD_TEST_PAGE 301
#define IDD_TEST_ABOUT 302
#define IDC_TEST_EDIT 310
#define IDC_TEST_CHECK 311
#define IDC_TEST_GROUP 312
#define IDC_TEST_LIST 313
#define IDM_TEST 400
#define IDM_TEST_OPEN 401
#define IDM_TEST_EXIT 402
#define IDM_TEST_FIRST 403
#define IDM_TEST_HELP 404
