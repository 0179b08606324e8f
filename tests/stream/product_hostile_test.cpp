#include "stream/product_stream.h"
