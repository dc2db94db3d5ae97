# The HTML tools: the editor, its preview and the source viewer, and their menu entries.
target_sources(glidepath_core PRIVATE
  htmltools/editor.cpp
  htmltools/editor_browser.cpp
  htmltools/html_viewer.cpp
  browser/menus_htmltools.cpp)
