#pragma once

class $identifier$
{
public:
    $identifier$();
};
