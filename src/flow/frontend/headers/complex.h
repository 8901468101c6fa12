#pragma once
#define complex _Complex
#define _Complex_I 1.0fi
#define I _Complex_I
