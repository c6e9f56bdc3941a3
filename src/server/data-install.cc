// Unpacking and installing downloaded reference data.
