// The screens of the documents and labels: papers for the venue and stickers
// for the stock.
#pragma once

#include "reports/documents/documenti_screens.h"
#include "reports/documents/etichette_screens.h"
