// Writes one number from two threads without a guard.
#include <thread>

int main() {
    int number = 0;
    std::thread other([&] {
        for (int i = 0; i < 1000; ++i)
            ++number;
    });
    for (int i = 0; i < 1000; ++i)
        ++number;
    other.join();
    return number == 0 ? 1 : 0;
}
