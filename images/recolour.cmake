# cmake -DSOURCE=in.svg -DTARGET=out.svg -P recolour.cmake: replaces colours by brighter ones for dark windows.
file(READ "${SOURCE}" picture)
string(REPLACE "#232629" "#eff0f1" picture "${picture}") # text
string(REPLACE "#da4453" "#ed6470" picture "${picture}") # red
string(REPLACE "#c85a00" "#f67400" picture "${picture}") # orange
string(REPLACE "#1d7fc4" "#3daee9" picture "${picture}") # blue
string(REPLACE "#6b7678" "#95a5a6" picture "${picture}") # grey
file(WRITE "${TARGET}" "${picture}")
