# The htmltools windows: target_sources(glidepath_core PRIVATE ...) with their units.
