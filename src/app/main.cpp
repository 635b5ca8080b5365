#include "app/zelqStartUp.h"

int main(int argc, char** argv) {
    return zelqStartUp::run(argc, argv);
}
