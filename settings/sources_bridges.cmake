# File and folder dialogs, the statement dump, mail and the external editors.
tavona_sources(WINDOWS settings/filedialogs.cpp settings/dump.cpp settings/mail.cpp
  settings/automation.cpp
  EXPORTS settings/exports_bridges.def)
