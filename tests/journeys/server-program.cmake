# The journeys that have a server use a program that looks for it on this machine,
# at a port that each build directory has for itself.
string(MD5 hash ${PROJECT_BINARY_DIR})
string(SUBSTRING ${hash} 0 6 digits)
math(EXPR server_port "20000 + 0x${digits} % 12000") # below those that connections get
set(server_application_dir ${PROJECT_BINARY_DIR}/test-server/MAVO-Survey)
survey_server_program(${server_application_dir} ${server_port})
