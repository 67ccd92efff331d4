// Reads memory that was freed.
int main() {
    volatile int* number = new int(1);
    delete number;
    return *number;
}
