# The journeys with a server use a program whose server is on this machine. The port depends on
# the build directory, so that two builds can run them at the same time.
string(MD5 hash ${PROJECT_BINARY_DIR})
string(SUBSTRING ${hash} 0 6 digits)
math(EXPR server_port "20000 + 0x${digits} % 12000") # below the ports of outgoing connections
set(server_application_dir ${PROJECT_BINARY_DIR}/test-server/MAVO-Survey)
survey_server_program(${server_application_dir} ${server_port})
