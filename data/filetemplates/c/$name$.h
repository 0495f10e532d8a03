#ifndef $IDENTIFIER$_H
#define $IDENTIFIER$_H



#endif
