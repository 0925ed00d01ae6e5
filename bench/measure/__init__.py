# SPDX-License-Identifier: MIT
"""What bench/performance is made of."""
