-- low + (high + carry) * 2 ** shift, two's complement: the bits of `low` below the shift pass by, one carry chain does
-- the rest.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;

entity xfc_add_shifted is
  generic (width    : positive;    -- bits of both, more than shift
           shift    : positive;
           sum_bits : positive);   -- enough for the sum, at least width + shift
  port (low   : in std_logic_vector(width - 1 downto 0);
        high  : in std_logic_vector(width - 1 downto 0);
        carry : in std_logic;
        sum   : out std_logic_vector(sum_bits - 1 downto 0));
end xfc_add_shifted;

architecture rtl of xfc_add_shifted is
  constant chain_bits : positive := sum_bits - shift + 1;   -- the carry comes from a bit below
begin
  assert sum_bits >= width + shift report "xfc_add_shifted: the sum has too few bits" severity failure;

  -- Variables, since simulators spend their time on signals.
  add : process (low, high, carry)
    variable augend : signed(width - shift downto 0);
    variable addend : signed(width downto 0);
    variable chain : signed(chain_bits - 1 downto 0);
  begin
    augend := signed(low(width - 1 downto shift)) & '1';
    addend := signed(high) & carry;
    chain := resize(augend, chain_bits) + resize(addend, chain_bits);
    sum <= std_logic_vector(chain(chain_bits - 1 downto 1)) & low(shift - 1 downto 0);
  end process;
end rtl;
