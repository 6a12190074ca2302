tavona_sources(WINDOWS controls/boxes.cpp EXPORTS controls/exports.def)
