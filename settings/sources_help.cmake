tavona_sources(WINDOWS settings/help.cpp EXPORTS settings/exports_help.def)
