#pragma once
// The version of the product, for the programs, their version resources and CMake's project() alike.
// Plain macros only: the resource compiler reads this file too.

#define VELBOOTER_VERSION_NUMBERS 1, 5, 0, 0
#define VELBOOTER_VERSION_TEXT "1.5.0"
#define VELBOOTER_PRODUCT_NAME "The Veltrane"
#define VELBOOTER_COMPANY_NAME "Corvane"
