#include "$name$.h"

$cursor$
