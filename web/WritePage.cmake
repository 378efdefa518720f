# Writes PAGE to OUT with the size of the MODULE in it: hosts that compress do not tell a browser how long a file is.
file(SIZE ${MODULE} MODULE_BYTES)
file(READ ${PAGE} text)
string(CONFIGURE "${text}" text @ONLY)
file(WRITE ${OUT} "${text}")
