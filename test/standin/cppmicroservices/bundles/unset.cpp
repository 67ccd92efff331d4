extern "C" void somethingElse() {}
