// A program of nothing but the headers that it compiles for others.
int main() {
    return 0;
}
