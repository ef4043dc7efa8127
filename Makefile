# SPDX-License-Identifier: GPL-2.0-or-later
# SPDX-FileCopyrightText: 2026 The Tallyforge developers

# Every target but install and clean works inside a sandbox that scripts/sandbox.sh sets up.
.NOTPARALLEL:
.DEFAULT_GOAL := help
.PHONY: help demo test screenshots soak bench asan fuzz faults format translations check shell install package clean
sandbox := scripts/sandbox.sh

# A screen of one's own is used unless HEADLESS says otherwise.
headless := $(filter-out 0,$(HEADLESS))

help: ## This list
	@echo "Tallyforge for OBS. Missing tools are set up on first use, in the user's cache."
	@awk -F ':.*## ' '/^[a-z]+:.*## / { printf "  make %-13s%s\n", $$1, $$2 }' Makefile

demo: ## Watch live scores in a real OBS (HEADLESS=1: without a screen, pictures in build/demo/)
	@$(sandbox) $(if $(headless),,--display) sh -c 'scripts/build.sh dev plugin-folder && exec python3 demo/demo.py'

test: ## Build, then run all tests and the end-to-end run in OBS
	@$(sandbox) sh -c 'scripts/build.sh dev && exec ctest --preset dev'

screenshots: ## Take pictures of the dock and the setup dialog in each theme (build/screenshots, docs/images)
	@$(sandbox) sh -c 'scripts/build.sh dev stage-parts && exec python3 demo/screenshots.py'

soak: ## Play match days in a real OBS while all sorts of things go wrong (SOAK_MINUTES=10, SOAK_SEED)
	@$(sandbox) sh -c 'scripts/build.sh dev stage-parts && exec tests/support/alone.sh python3 tests/soak/soak.py'

bench: ## Measure how fast a score reaches the picture
	@$(sandbox) sh -c 'scripts/build.sh bench && exec python3 bench/run.py'

asan: ## Run the tests that need no OBS with address and undefined-behaviour sanitizers
	@$(sandbox) sh -c 'scripts/build.sh asan && exec ctest --preset asan'

fuzz: ## Feed random bytes to all parsers (FUZZ_SECONDS=30 for each)
	@$(sandbox) sh -c 'scripts/build.sh fuzz && exec scripts/fuzz.sh'

faults: ## Plant faults in a copy, one at a time, and say which tests notice (ONLY=word, RESUME=1, ALONE=1: without OBS)
	@$(sandbox) python3 scripts/plant_faults.py $(if $(RESUME),--resume) $(if $(ALONE),--alone) $(ONLY)

format: ## Put all C++ into the house's format
	@$(sandbox) scripts/format.sh

translations: ## Bring the translation files up to date with the texts in the sources
	@$(sandbox) scripts/translations.sh

check: ## Formatting, warnings, clang-tidy, includes between folders, translations, scripts
	@CHECK_CHANGED="$$(scripts/changed-files.sh)" $(sandbox) scripts/check.sh

shell: ## A shell in the sandbox
	@$(sandbox) --display bash

install: ## Put the plug-in into your own OBS
	@$(sandbox) sh -c 'scripts/build.sh release plugin-folder && cmake --install build/release --prefix build/stage/tallyforge-obs >build/stage.log'
	@scripts/install.sh build/stage/tallyforge-obs

package: ## Make a release in build/package (OPTIONS=-D… for CMake, MERGE=latest.json of another system)
	@$(sandbox) packaging/package.sh $(if $(MERGE),--merge "$(MERGE)") $(OPTIONS)

clean: ## Remove all that was built
	rm -rf build
	@scripts/root.sh --say-cache
