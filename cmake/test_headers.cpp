// The owner of the headers that all tests share (Tests.cmake). Without tests of its own.
