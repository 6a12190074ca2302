tavona_sources(WINDOWS controls/dirui.cpp EXPORTS controls/exports_dirs.def)
