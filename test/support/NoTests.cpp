// What is compiled into a program that has only headers.
