def exchange(bench): pass
def random_exchange(bench): pass
def late(bench): pass
def names(bench): pass
def outages(bench): pass
def memory(bench): pass
def power_failure(bench): pass
def soak(bench): pass
