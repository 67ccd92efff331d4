// Overflows a signed number.
#include <limits>

int main(int argc, char**) {
    const int sum = std::numeric_limits<int>::max() + argc;
    return sum == 0 ? 1 : 0;
}
