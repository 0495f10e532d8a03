#pragma once

/// Offers the module "varneltexts" with the function "tr", which returns the texts of the product's scripts in the
/// user's language. Unlike "varnel" it is no part of the documented interface. Python must have been started.
void offerTexts();
