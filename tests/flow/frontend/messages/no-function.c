float x;
