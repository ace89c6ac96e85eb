#include <cstdio>

int main() {
  std::puts("korvan: nothing to do yet");
  return 0;
}
