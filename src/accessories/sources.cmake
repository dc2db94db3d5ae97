# The accessories windows: target_sources(glidepath_core PRIVATE ...) with their units.
target_sources(glidepath_core PRIVATE
  accessories/calculator_engine.cpp
  accessories/calculator.cpp
  accessories/note_pad.cpp
  accessories/doodle.cpp
  accessories/about.cpp
  accessories/read_me.cpp
  accessories/secret_place.cpp
  accessories/mp3_player.cpp
  browser/menus_accessories.cpp
)
# The pictures the windows carry with them, made by tools/themegen.
qt_add_resources(glidepath_core accessories_resources
  PREFIX /accessories
  BASE accessories/resources
  FILES
    accessories/resources/About.BMP
    accessories/resources/Author.BMP
    accessories/resources/SecretPlace.JPG
)
