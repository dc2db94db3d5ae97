# The accessories windows: target_sources(glidepath_core PRIVATE ...) with their units.
target_sources(glidepath_core PRIVATE
  accessories/calculator_engine.cpp
  accessories/calculator.cpp
  accessories/note_pad.cpp
  accessories/doodle.cpp
  browser/menus_accessories.cpp
)
