# The development key pair, made once and shared by all build folders, so that a setup and payload programs of different
# presets accept each other. Gives VANTA_DEV_KEY and VANTA_DEV_CERT (PEM) and VANTA_DEV_KEY_HASH_FILE (64 hex digits).
set(VANTA_DEV_KEY_DIR ${CMAKE_SOURCE_DIR}/build/devkey)
set(VANTA_DEV_KEY ${VANTA_DEV_KEY_DIR}/dev.key)
set(VANTA_DEV_CERT ${VANTA_DEV_KEY_DIR}/dev.crt)
set(VANTA_DEV_KEY_HASH_FILE ${VANTA_DEV_KEY_DIR}/dev.spki.sha256)
execute_process(COMMAND ${CMAKE_SOURCE_DIR}/tools/signing/make_dev_key.sh ${VANTA_DEV_KEY_DIR}
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
