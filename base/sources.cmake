# The platform-free base: wide strings, the appender, the formatter and raw
# memory. It includes nothing of the library above it.
tavona_sources(PORTABLE base/wstr.cpp base/format.cpp
               WIN32_SEAM base/sys_win32.cpp
               HOST_SEAM base/sys_host.cpp)
