# The two commands: `make run` and `make test`. The others are for those who work on the mixer.
.PHONY: run test check test-32 test-debian test-deb lint format fuzz bench bench-change bench-peers compare install deb clean

run:
	@scripts/run

test:
	@scripts/test

# While working on something: the tests that need neither a server nor a display, and the lints.
check:
	@scripts/test unit lint

test-32:
	@scripts/test-32

# RELEASE is Debian's name for one: bookworm, trixie, testing.
test-debian:
	@scripts/in-debian $(RELEASE) scripts/test default packages

test-deb:
	@$(if $(RELEASE),scripts/in-debian $(RELEASE)) scripts/test-deb

lint:
	@scripts/lint

format:
	@scripts/lint --fix

fuzz:
	@scripts/fuzz

bench:
	@scripts/bench

bench-change:
	@scripts/bench-change

bench-peers:
	@scripts/bench-peers

compare:
	@scripts/compare

# PREFIX and DESTDIR, as everywhere.
install:
	@PREFIX="$(PREFIX)" DESTDIR="$(DESTDIR)" scripts/install

deb:
	@scripts/deb $(RELEASE)

clean:
	rm -rf build
