#include "$name$.h"

$identifier$::$identifier$()
{
    $cursor$
}
