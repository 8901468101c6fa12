/* Ports that are words of C++, of which tools that make C++ of hardware warn, or classes of SystemVerilog. */
float words_of_cpp(float near, float far, float friend, float mailbox, float public, float catch, float abort) {
    return near * far + friend * mailbox + public * catch + abort;
}
