# Readers, the web facade and the file-name utilities.
