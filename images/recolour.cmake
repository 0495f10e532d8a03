# cmake -DSOURCE=light.svg -DTARGET=dark.svg -P recolour.cmake: a drawing of ours in the text colour of the dark theme.
file(READ "${SOURCE}" picture)
string(REPLACE "#232629" "#eff0f1" picture "${picture}")
file(WRITE "${TARGET}" "${picture}")
