# The two commands: `make run` and `make test`. The others are for those who work on the mixer.
.PHONY: run test test-32 lint format fuzz bench install clean

run:
	@scripts/run

test:
	@scripts/test

test-32:
	@scripts/test-32

lint:
	@scripts/lint

format:
	@scripts/lint --fix

fuzz:
	@scripts/fuzz

bench:
	@scripts/bench

install:
	@scripts/build run
	cmake --install build/run --prefix "$(or $(PREFIX),/usr/local)"

clean:
	rm -rf build
