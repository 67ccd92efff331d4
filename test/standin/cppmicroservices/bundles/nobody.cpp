extern "C" void _us_set_bundle_context_instance_nobody(void*) {}
