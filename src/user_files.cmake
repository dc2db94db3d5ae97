# The user's files a fresh program directory starts with: no favourites, and a home page that
# is the offline start page beside the program. Never overwritten once there.
if(NOT EXISTS ${PROGRAM_DIR}/FavPlaces.INI)
  file(WRITE ${PROGRAM_DIR}/FavPlaces.INI "")
endif()
if(NOT EXISTS ${PROGRAM_DIR}/HomePage.TXT)
  file(WRITE ${PROGRAM_DIR}/HomePage.TXT "file://${PROGRAM_DIR}/Start/index.html")
endif()
